#include "host/standin/StandInBitmap.h"

#include <utility>

namespace {

constexpr std::int32_t kPixelBytes = 4;

StandInBitmap* Self(SBitmapCore* bitmap) {
  return static_cast<StandInBitmap*>(bitmap);
}

}  // namespace

void StandInBitmap::Resize(std::int32_t width, std::int32_t height, EBitmapType type) {
  if (width != GetWidth() || height != GetHeight()) {
    PixelBytes pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                      kPixelBytes);
    fPixels = std::move(pixels);
  }
  SetSurface(type, fPixels.data(), width * kPixelBytes, width, height);
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

// The stand-in host draws its bitmap as it is; it keeps no smaller copies.
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}

void SBitmapCore::Restore() {
  SetSurface(GetType(), Self(this)->fPixels.data(), GetRowLength(), GetWidth(), GetHeight());
}
