// A whole host without the stand-in: the fourteen functions that the component calls, and the
// surface that it draws into. Copy it to begin a host of your own.
//
//   example_own_host samples/desktop.zvm
//
// Prints a line for each message: its number, 1 if it was decoded, the size of the picture and the
// CRC-32 of its pixels. Beside each sample is the list of the right lines.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include <zlib.h>
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

// The decoder's memory. Zero-filled, so that no picture shows old bytes of this process. Without
// memory, `std::bad_alloc` reaches the caller of the decoder.
void* Vorn::SystemNew(unsigned long size, FixedMallocOpts /*opts*/) {
  return new unsigned char[size]();
}
void Vorn::SystemDelete(void* memory) {
  delete[] static_cast<unsigned char*>(memory);
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

// Of the pixels alone: rows may be longer.
static unsigned long CrcOfPixels(const Surface& surface) {
  const auto rowBytes = static_cast<unsigned int>(surface.GetWidth() * 4);
  unsigned long crc = 0;
  for (int row = 0; row < surface.GetHeight(); ++row) {
    const std::ptrdiff_t offset = std::ptrdiff_t{surface.GetRowLength()} * row;
    crc = crc32(crc, surface.fPixels.get() + offset, rowBytes);
  }
  return crc;
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
  int number = 0;
  int failed = 0;
  for (; ReadMessage(file, &message); ++number) {
    const int length = static_cast<int>(message.size());
    const bool ok = decoder->DecompressVideoEmbedded(reference, message.data(), length);
    failed += ok ? 0 : 1;
    const Surface& surface = video.fSurface;
    std::printf("%d %d %dx%d %08lx\n", number, ok ? 1 : 0, surface.GetWidth(), surface.GetHeight(),
                CrcOfPixels(surface));
  }
  decoder->DecRef();
  std::fclose(file);
  return number != 0 && failed == 0 ? 0 : 2;
}
