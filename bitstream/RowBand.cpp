#include "bitstream/RowBand.h"

#include <cstdint>

#include "grid/BitmapDataBlock.h"
#include "grid/Sizes.h"

namespace zlibvideo {

bool RowBand::Find(const BitmapDataBlock& block, const BlockHeader& header, unsigned int room,
                   RowBand* band) {
  // 64 bits hold every product and sum below: they cannot wrap.
  const auto previous = static_cast<std::uint32_t>(block.fPreviousDataSize);
  const std::uint64_t row = std::uint64_t{static_cast<std::uint32_t>(block.fWidth)} *
                            static_cast<std::uint32_t>(kBlockPixelBytes);
  const std::uint64_t length = row * header.diffRowCount;
  const std::uint64_t offset = row * header.diffRowStart;
  const std::uint64_t end = offset + length;
  const std::uint64_t blockSize = row * static_cast<std::uint32_t>(block.fHeight);

  if (previous > room) return false;
  if (length == 0) {
    *band = {};
    return true;
  }
  // The band must lie in the block, and the block in the previous data, which lies in the room.
  if (end > blockSize || blockSize > previous) return false;

  band->offset = static_cast<unsigned int>(offset);
  band->length = static_cast<unsigned int>(length);
  band->after = static_cast<unsigned int>(blockSize - end);
  return true;
}

}  // namespace zlibvideo
