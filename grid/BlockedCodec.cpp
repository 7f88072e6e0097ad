#include "grid/BlockedCodec.h"

#include <algorithm>
#include <exception>
#include <new>

#include "grid/Sizes.h"
#include "host/GCHeap.h"
#include "host/HostMemory.h"

namespace {

/// Deletes the grid of a codec unless `Keep` was called. If the host throws while the grid is
/// built, the unfinished grid goes: the next message would take it for the grid that it needs.
class UnfinishedGrid {
 public:
  explicit UnfinishedGrid(BlockedCodec* codec) : fCodec(codec) {}
  UnfinishedGrid(const UnfinishedGrid&) = delete;
  UnfinishedGrid& operator=(const UnfinishedGrid&) = delete;
  ~UnfinishedGrid() {
    if (fCodec != nullptr) fCodec->DeleteBlocks();
  }

  void Keep() { fCodec = nullptr; }

 private:
  BlockedCodec* fCodec;
};

}  // namespace

bool BlockedCodec::DecompressBlock(unsigned char* /*destination*/,
                                   unsigned int* /*destinationLength*/,
                                   const unsigned char* /*source*/, unsigned int /*sourceLength*/) {
  return false;
}

BlockedCodec::~BlockedCodec() {
  DeleteBlocks();
  zlibvideo::ReleaseToHostAndClear(&fScratchColorBuffer);
  zlibvideo::ReleaseToHostAndClear(&fDecodeTable);
  zlibvideo::ReleaseToHostAndClear(&fPalette);
}

void* BlockedCodec::operator new(std::size_t size) {
  void* memory = zlibvideo::AllocateFromHost(size);
  if (memory == nullptr) std::terminate();
  return memory;
}

void BlockedCodec::operator delete(void* memory) noexcept {
  zlibvideo::ReleaseToHost(memory);
}

bool BlockedCodec::SetupCodec(std::int32_t imageWidth, std::int32_t imageHeight,
                              std::int32_t blockWidth, std::int32_t blockHeight) {
  if (fBlocks != nullptr && fImageWidth == imageWidth && fImageHeight == imageHeight &&
      fBlockWidth == blockWidth && fBlockHeight == blockHeight) {
    return true;
  }
  zlibvideo::ReleaseToHostAndClear(&fScratchColorBuffer);
  fScratchColorBufferSize = zlibvideo::ScratchBufferSize(blockWidth, blockHeight);
  fBlockWidth = blockWidth;
  fBlockHeight = blockHeight;
  fImageWidth = imageWidth;
  fImageHeight = imageHeight;
  return SetupBlocks(blockWidth, blockHeight);
}

bool BlockedCodec::SetupBlocks(std::int32_t blockWidth, std::int32_t blockHeight) {
  DeleteBlocks();
  std::int32_t lastWidth = 0;
  std::int32_t lastHeight = 0;
  fGridWidth = CalcGridSize(fImageWidth, blockWidth, &lastWidth);
  fGridHeight = CalcGridSize(fImageHeight, blockHeight, &lastHeight);
  if (!AllocateGrid()) return false;
  UnfinishedGrid unfinished(this);
  const bool complete = MakeBlocks(blockWidth, blockHeight, lastWidth, lastHeight);
  unfinished.Keep();
  return complete;
}

bool BlockedCodec::MakeBlocks(std::int32_t blockWidth, std::int32_t blockHeight,
                              std::int32_t lastWidth, std::int32_t lastHeight) {
  for (std::int32_t row = 0; row < fGridHeight; ++row) {
    const bool cutRow = row == fGridHeight - 1 && lastHeight != 0;
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      const bool cutColumn = column == fGridWidth - 1 && lastWidth != 0;
      if (!MakeBlock(row, column, cutColumn ? lastWidth : blockWidth,
                     cutRow ? lastHeight : blockHeight)) {
        return false;
      }
    }
  }
  return true;
}

bool BlockedCodec::AllocateGrid() {
  if (fGridWidth < 1 || fGridHeight < 1) return false;

  constexpr std::int64_t kTooManyBlocks = std::int64_t{1} << 29;
  const std::int64_t count = std::int64_t{fGridWidth} * fGridHeight;
  if (count >= kTooManyBlocks) Vorn::GCHeap::SignalObjectTooLarge();

  const auto entries = static_cast<std::size_t>(count);
  void* storage = zlibvideo::AllocateFromHost(entries * sizeof(BitmapDataBlock*));
  if (storage == nullptr) return false;
  fBlocks = static_cast<BitmapDataBlock**>(storage);
  std::fill_n(fBlocks, entries, nullptr);
  return true;
}

bool BlockedCodec::MakeBlock(std::int32_t row, std::int32_t column, std::int32_t width,
                             std::int32_t height) {
  void* storage =
      zlibvideo::AllocateFromHost(sizeof(BitmapDataBlock), Vorn::kFixedMallocBlockRecord);
  if (storage == nullptr) return false;

  auto* block = new (storage) BitmapDataBlock;
  const std::int64_t pixelOffset =
      std::int64_t{fBlockWidth} * column + std::int64_t{fBlockHeight} * row * fImageWidth;
  block->Initialize(static_cast<std::int32_t>(pixelOffset), width, height, fImageWidth, false);
  Cell(row, column) = block;
  return true;
}

void BlockedCodec::DeleteBlocks() {
  if (fBlocks == nullptr) return;
  for (std::int32_t row = 0; row < fGridHeight; ++row) {
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      BitmapDataBlock*& block = Cell(row, column);
      if (block == nullptr) continue;
      block->~BitmapDataBlock();
      zlibvideo::ReleaseToHostAndClear(&block);
    }
  }
  zlibvideo::ReleaseToHostAndClear(&fBlocks);
}

std::int32_t BlockedCodec::CalcGridSize(std::int32_t size, std::int32_t blockSize,
                                        std::int32_t* remainder) {
  *remainder = size % blockSize;
  return size / blockSize + (*remainder != 0 ? 1 : 0);
}

std::int32_t BlockedCodec::CalcBlockSize(std::int32_t imageSize) {
  constexpr std::int32_t kLargestSmallImage = 511;
  constexpr std::int32_t kSmallBlock = 64;
  constexpr std::int32_t kLargeBlock = 128;
  return imageSize > kLargestSmallImage ? kLargeBlock : kSmallBlock;
}

void BlockedCodec::ClearProcessedFlags() {
  if (fBlocks == nullptr) return;
  for (std::int32_t row = 0; row < fGridHeight; ++row) {
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      BitmapDataBlock* block = GetBlock(row, column);
      if (block != nullptr) block->fProcessed = false;
    }
  }
}

void BlockedCodec::CheckScratchColorBuffer() {
  if (fScratchColorBuffer != nullptr) return;
  if (fScratchColorBufferSize < 0) Vorn::GCHeap::SignalObjectTooLarge();
  fScratchColorBuffer = static_cast<unsigned char*>(
      zlibvideo::AllocateFromHost(static_cast<std::size_t>(fScratchColorBufferSize)));
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): the interface has it so
void BlockedCodec::WriteToBuf2(char* buffer, std::int32_t offset, std::int32_t value) {
  buffer[offset] = static_cast<char>(value >> 8 & 0xFF);
  buffer[offset + 1] = static_cast<char>(value & 0xFF);
}
