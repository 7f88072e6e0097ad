// A whole host without the stand-in: the fourteen functions that the component calls, and the
// surface that it draws into. Copy it to begin a host of your own.
//
//   example_own_host samples/desktop.zvm

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/GCHeap.h>
#include <zlibvideo/host/SBitmapCore.h>
#include <zlibvideo/host/SystemMemory.h>

// Rows begin at multiples of a cache line: drawing is faster there.
constexpr int kRowAlignment = 64;
constexpr std::align_val_t kAlignment{kRowAlignment};

struct Surface : SBitmapCore {
  // Throws without memory, and then keeps its old size.
  void Resize(int width, int height) {
    if (width == GetWidth() && height == GetHeight()) return;
    const int rowLength = (width * 4 + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
    const auto size = static_cast<std::size_t>(rowLength) * static_cast<std::size_t>(height);
    fPixels.reset(new (kAlignment) unsigned char[size]());
    SetSurface(kBitmapVideoFrame, fPixels.get(), rowLength, width, height);
  }

  struct Delete {
    void operator()(unsigned char* pixels) const { ::operator delete[](pixels, kAlignment); }
  };
  std::unique_ptr<unsigned char[], Delete> fPixels;
};

struct Video : SObject {
  Video() { SetRenderRecord(&fRecord, false); }

  Surface fSurface;
  RenderRecord fRecord = {&fSurface};
};

// The decoder's memory. Zero-filled, so that no picture shows old bytes of this process.
void* Vorn::SystemNew(unsigned long size, FixedMallocOpts /*opts*/) {
  void* memory = std::calloc(1, size);
  if (memory == nullptr) throw std::bad_alloc();  // reaches the caller of the decoder
  return memory;
}
void Vorn::SystemDelete(void* memory) {
  std::free(memory);
}
void Vorn::GCHeap::SignalObjectTooLarge() {
  std::abort();
}

// The bitmap. These pixels never move, and there are no smaller copies to keep up to date.
void SBitmapCore::LockBits(bool /*forWriting*/) {}
void SBitmapCore::UnlockBits() {}
void SBitmapCore::Restore() {}
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}

// The decoder base.
VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}
VideoDecompressor::~VideoDecompressor() {
  delete fVideoTexture;
  delete fVideoBuffer;
  delete fGPUCodec;
}
void VideoDecompressor::AddRef() {
  ++fRefCount;
}
void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height,
                                      bool, bool, EBitmapType, SRECT const*, SPOINT const*) {
  static_cast<Video*>(video.Get())->fSurface.Resize(width, height);
  return true;
}

// In a message file each message follows its length: 3 bytes, most significant first.
static bool ReadMessage(std::FILE* file, std::vector<unsigned char>* message) {
  unsigned char length[3];
  if (std::fread(length, 1, sizeof(length), file) != sizeof(length)) return false;
  message->resize(std::size_t{length[0]} << 16 | std::size_t{length[1]} << 8 | length[2]);
  return std::fread(message->data(), 1, message->size(), file) == message->size();
}

int main(int argc, char** argv) {
  std::FILE* file = argc == 2 ? std::fopen(argv[1], "rb") : nullptr;
  if (file == nullptr) {
    std::fprintf(stderr, "usage: %s FILE.zvm\n", argv[0]);
    return 1;
  }
  Video video;  // outlives the decoder
  auto* decoder = new ZLibVideoDecompressor(nullptr, nullptr);
  const Vorn::GCAPI::GCRef<SObject> reference(&video);
  std::vector<unsigned char> message;
  int decoded = 0;
  int failed = 0;
  while (ReadMessage(file, &message)) {
    const int length = static_cast<int>(message.size());
    const bool ok = decoder->DecompressVideoEmbedded(reference, message.data(), length);
    ++(ok ? decoded : failed);
  }
  decoder->DecRef();
  std::fclose(file);
  std::printf("%d x %d pixels, %d messages decoded, %d failed\n", video.fSurface.GetWidth(),
              video.fSurface.GetHeight(), decoded, failed);
  return decoded != 0 && failed == 0 ? 0 : 2;
}
