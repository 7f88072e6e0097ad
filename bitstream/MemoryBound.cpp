#include "bitstream/MemoryBound.h"

#include "grid/BitmapDataBlock.h"
#include "grid/BlockedCodec.h"
#include "grid/Sizes.h"

namespace zlibvideo {
namespace {

std::uint64_t GridSize(int imageSize, int blockSize) {
  std::int32_t remainder = 0;
  return static_cast<std::uint64_t>(BlockedCodec::CalcGridSize(imageSize, blockSize, &remainder));
}

}  // namespace

std::uint64_t MemoryBound(const FrameHeader& header) {
  const std::uint64_t blocks = GridSize(header.imageWidth, header.blockWidth) *
                               GridSize(header.imageHeight, header.blockHeight);
  const auto pixels =
      static_cast<std::uint64_t>(RawDataCapacity(header.blockWidth, header.blockHeight));
  const std::uint64_t version1 =
      blocks * (sizeof(BitmapDataBlock) + sizeof(BitmapDataBlock*) + pixels);
  if (header.codecType != kCodecTypeVersion2) return version1;

  // Previous data is as large as pixels, converted data at most as the buffer that it comes from.
  const auto scratch =
      static_cast<std::uint64_t>(ScratchBufferSize(header.blockWidth, header.blockHeight));
  constexpr std::uint64_t kTables = (kDecodeTableEntries + kPaletteColors) * sizeof(std::uint32_t);
  return version1 + blocks * (pixels + scratch) + scratch + kTables;
}

}  // namespace zlibvideo
