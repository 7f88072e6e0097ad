// Composition of the block grid into the host bitmap. Blocks and their rows run upward, the
// bitmap's rows run downward.

#include <cassert>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "grid/BitmapDataBlock.h"
#include "grid/BlockedCodec.h"
#include "host/SBitmapCore.h"
#include "output/BitmapRows.h"
#include "output/RowWidener.h"

namespace {

/// Paints the rows of a block that no message has filled yet opaque black.
void FillRowsBlack(const zlibvideo::BitmapRows& targets, std::int32_t rows, std::int32_t pixels) {
  constexpr unsigned char kOpaqueBlack[zlibvideo::kBitmapPixelBytes] = {0, 0, 0, 0xFF};
  for (std::int32_t row = 0; row < rows; ++row) {
    unsigned char* target = targets.Address(row);
    for (std::int32_t pixel = 0; pixel < pixels; ++pixel, target += sizeof(kOpaqueBlack)) {
      std::memcpy(target, kOpaqueBlack, sizeof(kOpaqueBlack));
    }
  }
}

/// Whether the picture fits: for an assertion. Rows are asked for their base address first, which
/// brings back what the host had put away.
[[maybe_unused]] bool Holds(SBitmapCore* bitmap, std::int32_t width, std::int32_t height) {
  static_cast<void>(bitmap->GetBMBaseAddr());
  return bitmap->GetWidth() >= width && bitmap->GetHeight() >= height &&
         std::abs(std::int64_t{bitmap->GetRowLength()}) >=
             std::int64_t{width} * zlibvideo::kBitmapPixelBytes;
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
  const zlibvideo::RowWidener widenRows = zlibvideo::FastestRowWidener();
  const bool hasGrid = fBlocks != nullptr && fGridWidth > 0;
  assert((!hasGrid || Holds(bitmap, fImageWidth, fImageHeight)) &&
         "the host's bitmap is too small");
  std::int32_t bottomRow = -1;
  for (std::int32_t row = fGridHeight - 1; hasGrid && row >= 0; --row) {
    bottomRow += GridRowHeight(row);
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      const BitmapDataBlock* block = GetBlock(row, column);
      if (block == nullptr) continue;
      const zlibvideo::BitmapRows targets(bitmap, bottomRow, column * fBlockWidth);
      if (block->fRawData != nullptr) {
        widenRows(block->fRawData, targets, block->fHeight, block->fWidth);
      } else {
        FillRowsBlack(targets, block->fHeight, block->fWidth);
      }
    }
  }
  bitmap->UpdateMipMap({0, bitmap->GetWidth(), 0, bitmap->GetHeight()});
  bitmap->UnlockBits();
}
