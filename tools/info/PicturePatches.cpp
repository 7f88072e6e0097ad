#include "tools/info/PicturePatches.h"

#include <algorithm>
#include <cstring>

#include "tools/pictures/Png.h"

namespace zlibvideo {
namespace {

/// A patch becomes a whole picture when those before it amount to this many pictures.
constexpr std::size_t kPicturesOfPatches = 4;

/// Pixels from the left end of a row up to the first difference.
std::size_t EqualFromLeft(const unsigned char* a, const unsigned char* b, std::size_t bytes) {
  const auto equal = static_cast<std::size_t>(std::mismatch(a, a + bytes, b).first - a);
  return equal / FrameView::kPixelBytes;
}

/// Pixels from the right end of a row up to the first difference.
std::size_t EqualFromRight(const unsigned char* a, const unsigned char* b, std::size_t bytes) {
  std::size_t equal = 0;
  while (equal < bytes && a[bytes - 1 - equal] == b[bytes - 1 - equal]) ++equal;
  return equal / FrameView::kPixelBytes;
}

/// The pixels of a rectangle, rows from the top with nothing between them.
std::vector<unsigned char> CutOut(const FrameView& frame, const PicturePatches::Patch& patch) {
  const std::size_t bytes = static_cast<std::size_t>(patch.width) * FrameView::kPixelBytes;
  std::vector<unsigned char> pixels;
  pixels.reserve(bytes * static_cast<std::size_t>(patch.height));
  for (int row = patch.y; row < patch.y + patch.height; ++row) {
    const unsigned char* start = frame.pixels + static_cast<std::size_t>(row) * frame.RowBytes() +
                                 static_cast<std::size_t>(patch.x) * FrameView::kPixelBytes;
    pixels.insert(pixels.end(), start, start + bytes);
  }
  return pixels;
}

std::size_t PixelCount(const PicturePatches::Patch& patch) {
  return static_cast<std::size_t>(patch.width) * static_cast<std::size_t>(patch.height);
}

}  // namespace

std::optional<PicturePatches::Patch> PicturePatches::Next(const FrameView& frame) {
  if (fLimitReached || frame.PixelCount() == 0) return std::nullopt;
  Patch patch = FindChange(frame);
  if (PixelCount(patch) == 0) return std::nullopt;

  const std::vector<unsigned char> pixels = CutOut(frame, patch);
  Picture picture;
  CopyColours({pixels.data(), patch.width, patch.height}, &picture);
  patch.png = EncodePng(picture);
  if (patch.png.size() > fBytesLeft) {
    fLimitReached = true;
    return std::nullopt;
  }
  fBytesLeft -= patch.png.size();
  Remember(frame, patch);
  return patch;
}

PicturePatches::Patch PicturePatches::FindChange(const FrameView& frame) const {
  const Patch whole = {0, 0, frame.width, frame.height, true, {}};
  if (!fSize.HasSizeOf(frame)) return whole;

  const std::size_t bytes = frame.RowBytes();
  const auto width = static_cast<std::size_t>(frame.width);
  std::size_t left = width;
  std::size_t right = width;
  int top = frame.height;
  int bottom = 0;
  for (int row = 0; row < frame.height; ++row) {
    const unsigned char* before = fPixels.data() + static_cast<std::size_t>(row) * bytes;
    const unsigned char* after = frame.pixels + static_cast<std::size_t>(row) * bytes;
    if (std::memcmp(before, after, bytes) == 0) continue;
    left = std::min(left, EqualFromLeft(before, after, bytes));
    right = std::min(right, EqualFromRight(before, after, bytes));
    top = std::min(top, row);
    bottom = row + 1;
  }
  if (bottom == 0) return {};
  if (fPatchedPixels > kPicturesOfPatches * frame.PixelCount()) return whole;
  return {static_cast<int>(left), top,   static_cast<int>(width - left - right),
          bottom - top,           false, {}};
}

void PicturePatches::Remember(const FrameView& frame, const Patch& patch) {
  fPatchedPixels = patch.whole ? 0 : fPatchedPixels + PixelCount(patch);
  fPixels.assign(frame.pixels, frame.pixels + frame.ByteCount());
  fSize = {nullptr, frame.width, frame.height};
}

}  // namespace zlibvideo
