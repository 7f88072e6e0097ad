#ifndef ZLIBVIDEO_BITSTREAM_BLOCKHEADER_H
#define ZLIBVIDEO_BITSTREAM_BLOCKHEADER_H

#include <cstdint>

#include "bitstream/ByteCursor.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {

/// What stands before the payload in a version-2 block record:
///
///   byte 0   format (grid/BlockFormat.h)
///   byte 1   first row of the band    } only when the format
///   byte 2   rows of the band         } announces one
///
/// The band fields are 0 where none is announced; all are 0 in versions without a header.
struct BlockHeader {
  static constexpr unsigned int kMaxSize = 3;

  std::uint8_t format = 0;
  /// Rows of the block, in the order of its buffer.
  std::uint8_t diffRowStart = 0;
  std::uint8_t diffRowCount = 0;

  /// Bytes that it takes in a record.
  unsigned int Size() const { return HasBand(format) ? kMaxSize : 1; }

  /// False when the bytes that the format announces are not all there; the cursor and `header` must
  /// not be used further then.
  [[nodiscard]] static bool Read(ByteCursor* cursor, BlockHeader* header);
  /// The inverse of `Read`, for those who make messages: the first `Size` bytes are the header.
  void Write(unsigned char (&bytes)[kMaxSize]) const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_BLOCKHEADER_H
