#ifndef ZLIBVIDEO_TESTS_CONSUMERS_HOST_H
#define ZLIBVIDEO_TESTS_CONSUMERS_HOST_H

#include <zlibvideo/host/GCRef.h>
#include <zlibvideo/host/RenderRecord.h>
#include <zlibvideo/host/SBitmapCore.h>
#include <zlibvideo/host/SObject.h>
#include <cstddef>
#include <cstdint>
#include <memory>

/// A complete host of an embedder: C++17, with or without RTTI and exceptions. It stops the process
/// if it gets an object of another host. CONSUMER_PADDING, in bytes, gives two hosts in a process
/// objects that differ.
#ifndef CONSUMER_PADDING
#define CONSUMER_PADDING 8
#endif

/// Beyond `limit` bytes in use, allocation throws `std::bad_alloc` or, without exceptions, returns
/// null. A refused surface stays as it is.
struct HostState {
  std::size_t limit = SIZE_MAX, inUse = 0;
  bool refusesSurfaces = false;
};
extern HostState thisHost;  // its address identifies this host in the process

class Surface : public SBitmapCore {
 public:
  void Resize(std::int32_t width, std::int32_t height);
  const unsigned char* Pixels() const { return fPixels.get(); }
  std::size_t Size() const { return fSize; }

 private:
  std::unique_ptr<unsigned char[]> fPixels;
  std::size_t fSize = 0;
};

class Video : public SObject {
 public:
  Video() { SetRenderRecord(&fRecord, false); }

  Vorn::GCAPI::GCRef<SObject> Ref() { return Vorn::GCAPI::GCRef<SObject>(this); }
  Surface& GetSurface() { return fSurface; }
  const void* Maker() const { return fMaker; }

 private:
  [[maybe_unused]] unsigned char fPadding[CONSUMER_PADDING] = {};
  const void* fMaker = &thisHost;
  Surface fSurface;
  RenderRecord fRecord = {&fSurface};
};

#endif  // ZLIBVIDEO_TESTS_CONSUMERS_HOST_H
