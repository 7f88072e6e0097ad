#include "Host.h"

#include <zlibvideo/host/GCHeap.h>
#include <zlibvideo/host/SystemMemory.h>
#include <zlibvideo/host/VideoDecompressor.h>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

struct alignas(std::max_align_t) Allocation {
  const void* maker;
  std::size_t size;
};

void ExpectOwn(const void* maker) {
  if (maker == &thisHost) return;
  std::fputs("a host got an object of another host\n", stderr);
  std::abort();
}

}  // namespace

HostState thisHost;

void Surface::Resize(std::int32_t width, std::int32_t height) {
  if (width == GetWidth() && height == GetHeight()) return;
  fSize = std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  fPixels.reset(new unsigned char[fSize]);
  SetSurface(kBitmapVideoFrame, fPixels.get(), width * 4, width, height);
}

void* Vorn::SystemNew(unsigned long size, FixedMallocOpts /*opts*/) {
  const bool fits = thisHost.inUse + size <= thisHost.limit;
  void* storage = fits ? std::calloc(1, sizeof(Allocation) + std::size_t{size}) : nullptr;
  if (storage == nullptr) {
#ifdef __cpp_exceptions
    throw std::bad_alloc();
#else
    return nullptr;
#endif
  }
  thisHost.inUse += size;
  return new (storage) Allocation{&thisHost, size} + 1;
}

void Vorn::SystemDelete(void* memory) {
  Allocation* allocation = static_cast<Allocation*>(memory) - 1;
  ExpectOwn(allocation->maker);
  thisHost.inUse -= allocation->size;
  std::free(allocation);
}

void Vorn::GCHeap::SignalObjectTooLarge() {
  std::abort();
}

void SBitmapCore::LockBits(bool /*forWriting*/) {}
void SBitmapCore::UnlockBits() {}
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}
void SBitmapCore::Restore() {}

VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}
VideoDecompressor::~VideoDecompressor() = default;
void VideoDecompressor::AddRef() {
  ++fRefCount;
}
void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> /*video*/) {}

bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height,
                                      bool /*flag1*/, bool /*flag2*/, EBitmapType /*type*/,
                                      SRECT const* /*area*/, SPOINT const* /*origin*/) {
  Video* own = static_cast<Video*>(video.Get());
  ExpectOwn(own->Maker());
  if (thisHost.refusesSurfaces) return false;
  own->GetSurface().Resize(width, height);
  return true;
}
