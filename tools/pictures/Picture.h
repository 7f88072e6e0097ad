#ifndef ZLIBVIDEO_TOOLS_PICTURES_PICTURE_H
#define ZLIBVIDEO_TOOLS_PICTURES_PICTURE_H

#include <cstddef>
#include <vector>

namespace zlibvideo {

/// A picture to be encoded: rows from the top with nothing between them, 3 bytes a pixel in the
/// order of a block's pixels: blue, green, red.
struct Picture {
  static constexpr std::size_t kPixelBytes = 3;

  /// Pixels.
  int width = 0;
  int height = 0;
  std::vector<unsigned char> pixels;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PICTURE_H
