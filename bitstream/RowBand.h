#ifndef ZLIBVIDEO_BITSTREAM_ROWBAND_H
#define ZLIBVIDEO_BITSTREAM_ROWBAND_H

#include "bitstream/MessageBody.h"

struct BitmapDataBlock;

namespace zlibvideo {

/// Where a banded payload lands in its block, and what is taken from the block's previous data
/// around it. All values are byte counts within the block.
struct RowBand {
  unsigned int offset = 0;
  unsigned int length = 0;
  /// Bytes of the block after the band.
  unsigned int after = 0;

  unsigned int End() const { return offset + length; }
  bool IsEmpty() const { return length == 0; }

  enum class Fault {
    kNone,
    kPreviousDataTooLong,   ///< previous data would not fit the destination
    kTooLarge,              ///< an end that cannot be counted in 32 bits
    kStartsBeyondRoom,      ///< offset past the destination
    kEndsBeyondPrevious,    ///< end past the previous data
    kEndsBeyondRoom,        ///< end past the destination; not seen, as previous data fits it
    kEndsBeyondBlock,       ///< end past the block
    kPreviousDataTooShort,  ///< rows after the band are not all in the previous data
  };

  /// The band that `header` announces, in `block` and a destination of `room` bytes; `*band` is
  /// left alone on a fault. A band of no rows is reported with all three 0, whatever row it names.
  /// Of the block, only its geometry and the size of its previous data are read.
  [[nodiscard]] static Fault Find(const BitmapDataBlock& block, const BlockHeader& header,
                                  unsigned int room, RowBand* band);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_ROWBAND_H
