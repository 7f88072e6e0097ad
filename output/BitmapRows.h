#ifndef ZLIBVIDEO_OUTPUT_BITMAPROWS_H
#define ZLIBVIDEO_OUTPUT_BITMAPROWS_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "host/BitmapPixel.h"
#include "host/SBitmapCore.h"

namespace zlibvideo {

/// The rows of a bitmap that a block's rows land in. Blocks run upward, the bitmap runs downward:
/// the block's row 0 lands in bitmap row `bottomRow`, row r in `bottomRow` - r.
class BitmapRows {
 public:
  /// `column` is the bitmap pixel where each row begins. The bitmap must outlive this object.
  BitmapRows(SBitmapCore* bitmap, std::int32_t bottomRow, std::int32_t column)
      : fBitmap(bitmap),
        fBottomRow(bottomRow),
        fColumnOffset(std::ptrdiff_t{column} * kBitmapPixelBytes) {}

  /// Where the block's row `row` begins. The host is asked for base address and row length on every
  /// call, as the bitmap's interface requires. Always inline: its guards put it just over Clang's
  /// limit, and a call for every row costs a quarter of the speed, in small blocks more.
  [[gnu::always_inline]] unsigned char* Address(std::int32_t row) const {
    unsigned char* base = fBitmap->GetBMBaseAddr();
    // Only now: the base address brings back pixels that the host had put away.
    assert(std::abs(std::int64_t{fBitmap->GetRowLength()}) >=
               std::int64_t{fBitmap->GetWidth()} * kBitmapPixelBytes &&
           "the rows of the host's bitmap are too short");
    return base + std::int64_t{fBitmap->GetRowLength()} * (fBottomRow - row) + fColumnOffset;
  }

 private:
  SBitmapCore* fBitmap;
  std::int32_t fBottomRow;
  std::ptrdiff_t fColumnOffset;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_OUTPUT_BITMAPROWS_H
