// A host of one's own: the decoder draws straight into this program's surface, whose rows start
// at addresses that are multiples of 256. Only the allocator is left to the stand-in host.

#include <cstddef>
#include <cstdio>
#include <memory>
#include <new>

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/SBitmapCore.h>

constexpr int kRowAlignment = 256;
constexpr std::align_val_t kAlignment{kRowAlignment};

struct Surface : SBitmapCore {
  void Resize(int width, int height) {
    const int stride = (width * 4 + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
    const auto size = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
    fPixels.reset(new (kAlignment) unsigned char[size]());
    SetSurface(kBitmapVideoFrame, fPixels.get(), stride, width, height);
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

// These pixels never move and are never put away, so there is nothing to do around a drawing.
void SBitmapCore::LockBits(bool /*forWriting*/) {}
void SBitmapCore::UnlockBits() {}
void SBitmapCore::Restore() {}
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}

// The host's share of the decoder base.
VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}
VideoDecompressor::~VideoDecompressor() = default;
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

int main() {
  Video video;
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  // A key frame of 100 x 16 pixels in seven blocks with empty records: a black picture.
  unsigned char message[5 + 7 * 2] = {0x13, 0x00, 100, 0x00, 16};
  const Vorn::GCAPI::GCRef<SObject> reference(&video);
  if (!decoder.DecompressVideoEmbedded(reference, message, sizeof(message))) return 2;
  const unsigned char* bottomRow = video.fSurface.GetBMBaseAddr() + 15 * 512;
  std::printf("alpha of the last pixel: %d\n", bottomRow[99 * 4 + 3]);
  return bottomRow[99 * 4 + 3] == 255 ? 0 : 2;
}
