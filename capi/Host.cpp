// The host of the C interface. It is compiled without exceptions. If memory runs out, it returns
// null.

#include "capi/Host.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "host/BitmapPixel.h"
#include "host/GCHeap.h"
#include "host/SystemMemory.h"
#include "host/VideoDecompressor.h"

namespace {

#ifdef __wasm__
bool memoryRanOut = false;  // a module has a single thread
#else
thread_local bool memoryRanOut = false;
#endif

}  // namespace

// The memory is zero. A picture never shows a byte that no message wrote.
void* Vorn::SystemNew(unsigned long size, FixedMallocOpts /*opts*/) {
  void* memory = std::calloc(size == 0 ? 1 : size, 1);
  if (memory == nullptr) memoryRanOut = true;
  return memory;
}

void Vorn::SystemDelete(void* memory) {
  std::free(memory);
}

void Vorn::GCHeap::SignalObjectTooLarge() {
  std::abort();
}

namespace zlibvideo {

bool MemoryRanOut() {
  return std::exchange(memoryRanOut, false);
}

PictureBitmap::~PictureBitmap() {
  std::free(fBaseAddress.Get());
}

bool PictureBitmap::Resize(std::int32_t width, std::int32_t height) {
  // Composition is faster where rows start on a cache line boundary.
  constexpr std::size_t kAlignment = 64;
  std::free(fBaseAddress.Get());
  const std::int32_t rowLength = width * kBitmapPixelBytes;
  const std::size_t size = static_cast<std::size_t>(rowLength) * static_cast<std::size_t>(height);
  void* pixels = std::aligned_alloc(kAlignment, (size + kAlignment - 1) / kAlignment * kAlignment);
  if (pixels == nullptr) width = height = 0;
  SetSurface(kBitmapVideoFrame, static_cast<unsigned char*>(pixels), rowLength, width, height);
  return pixels != nullptr;
}

}  // namespace zlibvideo

// Pixels always have an address, and the bitmap has no smaller copies.
void SBitmapCore::LockBits(bool /*forWriting*/) {}
void SBitmapCore::UnlockBits() {}
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}
void SBitmapCore::Restore() {}

// The decoder gets no video object. It never sizes a bitmap.
VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}
VideoDecompressor::~VideoDecompressor() = default;
void VideoDecompressor::AddRef() {
  ++fRefCount;
}
void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> /*video*/, int, int, bool, bool,
                                      EBitmapType, SRECT const*, SPOINT const*) {
  return false;
}

// Tables of virtual operations refer to these functions, and nothing calls them. Defined here, the
// library needs no library of C++.
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
extern "C" void __cxa_pure_virtual() {
  std::abort();
}
