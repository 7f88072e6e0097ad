#include "examples/player/TextureVideo.h"

#include <zlibvideo/host/VideoDecompressor.h>

void TextureBitmap::Resize(int width, int height) {
  if (fTexture != nullptr && width == GetWidth() && height == GetHeight()) return;
  fTexture = Own(SDL_CreateTexture(fRenderer, SDL_PIXELFORMAT_BGRA32, SDL_TEXTUREACCESS_STREAMING,
                                   width, height));
  SDL_SetTextureBlendMode(fTexture.get(), SDL_BLENDMODE_NONE);
  SetSurface(kBitmapVideoFrame, nullptr, 0, width, height);
}

void TextureBitmap::Lock() {
  void* pixels = nullptr;
  int rowLength = 0;
  Succeed(SDL_LockTexture(fTexture.get(), nullptr, &pixels, &rowLength) == 0);
  SetSurface(GetType(), static_cast<unsigned char*>(pixels), rowLength, GetWidth(), GetHeight());
}

void TextureBitmap::Unlock() {
  SetSurface(GetType(), nullptr, 0, GetWidth(), GetHeight());
  SDL_UnlockTexture(fTexture.get());
}

// The bitmaps of this program are of that one class.
void SBitmapCore::LockBits(bool /*forWriting*/) {
  static_cast<TextureBitmap*>(this)->Lock();
}
void SBitmapCore::UnlockBits() {
  static_cast<TextureBitmap*>(this)->Unlock();
}
// Locked pixels have an address, and there are no smaller pictures to keep up to date.
void SBitmapCore::Restore() {}
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}

// The host's share of the decoder base. What throws here or above makes its message fail.
bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height,
                                      bool, bool, EBitmapType, SRECT const*, SPOINT const*) {
  static_cast<TextureVideo*>(video.Get())->Bitmap().Resize(width, height);
  return true;
}
VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}
VideoDecompressor::~VideoDecompressor() = default;
void VideoDecompressor::AddRef() {
  ++fRefCount;
}
void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
