#include "host/standin/StandInBitmap.h"

#include "host/BitmapPixel.h"

namespace {

StandInBitmap* Self(SBitmapCore* bitmap) {
  return static_cast<StandInBitmap*>(bitmap);
}

}  // namespace

void StandInBitmap::Resize(std::int32_t width, std::int32_t height, EBitmapType type) {
  if (width != GetWidth() || height != GetHeight()) {
    const std::size_t byteCount = static_cast<std::size_t>(width) *
                                  static_cast<std::size_t>(height) * zlibvideo::kBitmapPixelBytes;
    fPixels.reset(new (kAlignment) unsigned char[byteCount]());
    fByteCount = byteCount;
  }
  SetSurface(type, fPixels.get(), width * zlibvideo::kBitmapPixelBytes, width, height);
}

void StandInBitmap::PutAway() {
  SetSurface(GetType(), nullptr, GetRowLength(), GetWidth(), GetHeight());
}

void SBitmapCore::LockBits(bool /*forWriting*/) {
  Self(this)->fLocked = true;
}

void SBitmapCore::UnlockBits() {
  Self(this)->fLocked = false;
}

// The stand-in host keeps no smaller copies of its bitmap.
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}

void SBitmapCore::Restore() {
  SetSurface(GetType(), Self(this)->fPixels.get(), GetRowLength(), GetWidth(), GetHeight());
}
