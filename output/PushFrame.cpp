// Composition of the block grid into the host bitmap. Blocks and their rows run upward, the
// bitmap's rows run downward.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "grid/BlockedCodec.h"
#include "grid/BufferSizes.h"
#include "host/SBitmapCore.h"
#include "output/WidenRow.h"

namespace {

/// Address of pixel `column` of bitmap row `row`. Address and row length are asked for each row
/// anew: the host may have put the pixels away and brought them back elsewhere.
unsigned char* PixelAddress(SBitmapCore* bitmap, std::int32_t row, std::int32_t column) {
  unsigned char* base = bitmap->GetBMBaseAddr();
  return base + std::int64_t{bitmap->GetRowLength()} * row +
         std::ptrdiff_t{column} * zlibvideo::kBitmapPixelBytes;
}

void FillRowBlack(unsigned char* target, std::int32_t pixels) {
  constexpr unsigned char kOpaqueBlack[zlibvideo::kBitmapPixelBytes] = {0, 0, 0, 0xFF};
  for (; pixels > 0; --pixels, target += sizeof(kOpaqueBlack)) {
    std::memcpy(target, kOpaqueBlack, sizeof(kOpaqueBlack));
  }
}

/// Writes a block whose first buffer row lands in bitmap row `bottomRow`.
void PushBlock(const BitmapDataBlock& block, SBitmapCore* bitmap, std::int32_t bottomRow,
               std::int32_t column) {
  const std::ptrdiff_t rowBytes = std::ptrdiff_t{block.fWidth} * zlibvideo::kBlockPixelBytes;
  const unsigned char* source = block.fRawData;
  for (std::int32_t row = 0; row < block.fHeight; ++row) {
    unsigned char* target = PixelAddress(bitmap, bottomRow - row, column);
    if (source == nullptr) {
      FillRowBlack(target, block.fWidth);
    } else {
      zlibvideo::WidenRow(source + row * rowBytes, target, block.fWidth);
    }
  }
}

}  // namespace

std::int32_t BlockedCodec::GridRowHeight(std::int32_t row) const {
  const BitmapDataBlock* first = GetBlock(row, 0);
  if (first != nullptr) return first->fHeight;
  // The host had no memory for the record. The rows that do exist still belong where a complete
  // grid would show them.
  const std::int32_t above = fImageHeight - row * fBlockHeight;
  return above < fBlockHeight ? above : fBlockHeight;
}

void BlockedCodec::PushFrame(SBitmapCore* bitmap) {
  if (bitmap->GetType() == kBitmapNotAddressable) return;

  bitmap->LockBits(true);
  const bool hasGrid = fBlocks != nullptr && fGridWidth > 0;
  std::int32_t bottomRow = -1;
  for (std::int32_t row = fGridHeight - 1; hasGrid && row >= 0; --row) {
    bottomRow += GridRowHeight(row);
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      const BitmapDataBlock* block = GetBlock(row, column);
      if (block != nullptr) PushBlock(*block, bitmap, bottomRow, column * fBlockWidth);
    }
  }
  bitmap->UpdateMipMap({0, bitmap->GetWidth(), 0, bitmap->GetHeight()});
  bitmap->UnlockBits();
}
