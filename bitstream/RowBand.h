#ifndef ZLIBVIDEO_BITSTREAM_ROWBAND_H
#define ZLIBVIDEO_BITSTREAM_ROWBAND_H

#include "bitstream/MessageBody.h"

struct BitmapDataBlock;

namespace zlibvideo {

/// The rows of a block that a banded payload replaces. The block's previous data gives the rows
/// around them. All values are byte counts within the block.
struct RowBand {
  unsigned int offset = 0;
  unsigned int length = 0;
  /// Bytes of the block after the band.
  unsigned int after = 0;

  unsigned int End() const { return offset + length; }
  bool IsEmpty() const { return length == 0; }

  /// Finds the band that `header` announces, in `block` and a destination of `room` bytes. A band
  /// of no rows has all three values 0, whatever row it names. False, with `band` unchanged, if the
  /// previous data is longer than the room, or if there are rows and the band ends after the block
  /// or the block after the previous data. Of the block, only its geometry and the size of its
  /// previous data are read.
  [[nodiscard]] static bool Find(const BitmapDataBlock& block, const BlockHeader& header,
                                 unsigned int room, RowBand* band);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_ROWBAND_H
