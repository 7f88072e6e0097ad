#include "bitstream/RowBand.h"

#include <cstdint>
#include <limits>

#include "grid/BitmapDataBlock.h"
#include "grid/Sizes.h"

namespace zlibvideo {

RowBand::Fault RowBand::Find(const BitmapDataBlock& block, const BlockHeader& header,
                             unsigned int room, RowBand* band) {
  // 64 bits hold every product and sum below, so no test can be fooled by a wrap.
  constexpr std::uint64_t kMaxCount = std::numeric_limits<std::uint32_t>::max();
  const auto previous = static_cast<std::uint32_t>(block.fPreviousDataSize);
  const std::uint64_t row = std::uint64_t{static_cast<std::uint32_t>(block.fWidth)} *
                            static_cast<std::uint32_t>(kBlockPixelBytes);
  const std::uint64_t length = row * header.diffRowCount;
  const std::uint64_t offset = row * header.diffRowStart;
  const std::uint64_t end = offset + length;
  const std::uint64_t blockSize = row * static_cast<std::uint32_t>(block.fHeight);

  if (previous > room) return Fault::kPreviousDataTooLong;
  if (length == 0) {
    *band = {};
    return Fault::kNone;
  }
  if (end > kMaxCount) return Fault::kTooLarge;
  if (offset > room) return Fault::kStartsBeyondRoom;
  if (blockSize > kMaxCount) return Fault::kTooLarge;
  if (end > previous) return Fault::kEndsBeyondPrevious;
  if (end > room) return Fault::kEndsBeyondRoom;
  if (end > blockSize) return Fault::kEndsBeyondBlock;
  if (end < blockSize && blockSize > previous) return Fault::kPreviousDataTooShort;

  band->offset = static_cast<unsigned int>(offset);
  band->length = static_cast<unsigned int>(length);
  band->after = static_cast<unsigned int>(blockSize - end);
  return Fault::kNone;
}

}  // namespace zlibvideo
