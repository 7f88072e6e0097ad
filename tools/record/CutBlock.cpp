#include "tools/record/CutBlock.h"

#include <cstddef>

#include "grid/BufferSizes.h"

namespace zlibvideo {

std::vector<unsigned char> CutBlock(const Picture& picture, const BitmapDataBlock& block) {
  static_assert(Picture::kPixelBytes == kBlockPixelBytes);
  // The block's place is given in a frame whose rows run upward.
  const std::ptrdiff_t stride = block.fImageStride;
  const std::ptrdiff_t bottomRow = picture.height - 1 - block.fImageOffset / stride;
  const std::ptrdiff_t left = block.fImageOffset % stride;
  const std::ptrdiff_t rowBytes = std::ptrdiff_t{block.fWidth} * kBlockPixelBytes;

  std::vector<unsigned char> cut;
  cut.reserve(static_cast<std::size_t>(rowBytes * block.fHeight));
  for (std::ptrdiff_t y = 0; y < block.fHeight; ++y) {
    const auto row = picture.pixels.begin() + (bottomRow - y) * stride + left;
    cut.insert(cut.end(), row, row + rowBytes);
  }
  return cut;
}

}  // namespace zlibvideo
