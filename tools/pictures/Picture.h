#ifndef ZLIBVIDEO_TOOLS_PICTURES_PICTURE_H
#define ZLIBVIDEO_TOOLS_PICTURES_PICTURE_H

#include <cstddef>
#include <vector>

#include "output/BitmapRows.h"

namespace zlibvideo {

/// A picture to record or to write: rows from the top without padding, 3 bytes a pixel in the order
/// of a block's pixels: blue, green, red.
struct Picture {
  static constexpr std::size_t kPixelBytes = 3;

  /// Pixels.
  int width = 0;
  int height = 0;
  std::vector<unsigned char> pixels;
};

/// A decoded picture, not owned: rows from the top without padding, 4 bytes a pixel: blue, green,
/// red, opacity. 0 × 0 before the first picture.
struct FrameView {
  static constexpr std::size_t kPixelBytes = kBitmapPixelBytes;

  const unsigned char* pixels = nullptr;
  /// Pixels.
  int width = 0;
  int height = 0;

  std::size_t PixelCount() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  }
  std::size_t RowBytes() const { return static_cast<std::size_t>(width) * kPixelBytes; }
  std::size_t ByteCount() const { return PixelCount() * kPixelBytes; }
  bool HasSizeOf(const FrameView& other) const {
    return width == other.width && height == other.height;
  }
};

/// Fills `picture` with the pixels of `frame` without opacity.
inline void CopyColours(const FrameView& frame, Picture* picture) {
  picture->width = frame.width;
  picture->height = frame.height;
  picture->pixels.resize(frame.PixelCount() * Picture::kPixelBytes);
  unsigned char* out = picture->pixels.data();
  for (std::size_t i = 0; i < frame.ByteCount(); i += FrameView::kPixelBytes) {
    *out++ = frame.pixels[i];
    *out++ = frame.pixels[i + 1];
    *out++ = frame.pixels[i + 2];
  }
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PICTURE_H
