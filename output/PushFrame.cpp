// Composition of the block grid into the host bitmap. Blocks and their rows run upward, the
// bitmap's rows run downward.

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstring>

#include "grid/BitmapDataBlock.h"
#include "grid/BlockedCodec.h"
#include "host/SBitmapCore.h"
#include "host/SRECT.h"
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

/// Whether the picture fits, as far as the bitmap's size tells: for an assertion.
[[maybe_unused]] bool Holds(const SBitmapCore& bitmap, std::int32_t width, std::int32_t height) {
  return bitmap.GetWidth() >= width && bitmap.GetHeight() >= height;
}

/// Extends `*area` to hold `other`. An empty area becomes `other`.
void Include(const SRECT& other, SRECT* area) {
  if (area->xMin == area->xMax) {
    *area = other;
    return;
  }
  *area = {std::min(area->xMin, other.xMin), std::max(area->xMax, other.xMax),
           std::min(area->yMin, other.yMin), std::max(area->yMax, other.yMax)};
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

/// Calls `visit(block, bottomRow, left)` for each record that exists, in the order of the bitmap's
/// rows: the block's row 0 lands in bitmap row `bottomRow`, its first column in bitmap column
/// `left`.
template <typename Visit>
void BlockedCodec::ForEachBlock(const Visit& visit) const {
  if (fBlocks == nullptr || fGridWidth < 1) return;
  std::int32_t bottomRow = -1;
  for (std::int32_t row = fGridHeight - 1; row >= 0; --row) {
    bottomRow += GridRowHeight(row);
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      BitmapDataBlock* block = GetBlock(row, column);
      if (block != nullptr) visit(block, bottomRow, column * fBlockWidth);
    }
  }
}

SRECT BlockedCodec::ChangedArea() const {
  SRECT area = {};
  ForEachBlock([&area](const BitmapDataBlock* block, std::int32_t bottomRow, std::int32_t left) {
    if (block->fDrawn) return;
    const std::int32_t below = bottomRow + 1;
    Include({left, left + block->fWidth, below - block->fHeight, below}, &area);
  });
  return area;
}

void BlockedCodec::DrawBlocks(SBitmapCore* bitmap, bool all) const {
  const zlibvideo::RowWidener widenRows = zlibvideo::FastestRowWidener();
  assert((fBlocks == nullptr || Holds(*bitmap, fImageWidth, fImageHeight)) &&
         "the host's bitmap is too small");
  ForEachBlock([=](const BitmapDataBlock* block, std::int32_t bottomRow, std::int32_t left) {
    if (block->fDrawn && !all) return;
    const zlibvideo::BitmapRows targets(bitmap, bottomRow, left);
    if (block->fRawData != nullptr) {
      widenRows(block->fRawData, targets, block->fHeight, block->fWidth);
    } else {
      FillRowsBlack(targets, block->fHeight, block->fWidth);
    }
  });
}

void BlockedCodec::MarkDrawn() {
  ForEachBlock([](BitmapDataBlock* block, std::int32_t /*bottomRow*/, std::int32_t /*left*/) {
    block->fDrawn = true;
  });
}

void BlockedCodec::PushFrame(SBitmapCore* bitmap) {
  if (bitmap->GetType() == kBitmapNotAddressable) return;
  bitmap->LockBits(true);
  DrawBlocks(bitmap, true);
  bitmap->UpdateMipMap({0, bitmap->GetWidth(), 0, bitmap->GetHeight()});
  // Only now: if the host threw, the blocks are still to be drawn.
  MarkDrawn();
  bitmap->UnlockBits();
}

SRECT BlockedCodec::PushChanges(SBitmapCore* bitmap) {
  const SRECT area = ChangedArea();
  if (area.xMin == area.xMax || bitmap->GetType() == kBitmapNotAddressable) return {};
  bitmap->LockBits(true);
  DrawBlocks(bitmap, false);
  bitmap->UpdateMipMap(area);
  MarkDrawn();
  bitmap->UnlockBits();
  return area;
}

bool BlockedCodec::IsComplete() const {
  if (fBlocks == nullptr) return false;
  for (std::int32_t row = 0; row < fGridHeight; ++row) {
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      const BitmapDataBlock* block = GetBlock(row, column);
      if (block == nullptr || !block->fFilled) return false;
    }
  }
  return true;
}
