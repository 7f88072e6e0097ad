#ifndef ZLIBVIDEO_BITSTREAM_BLOCKRECORD_H
#define ZLIBVIDEO_BITSTREAM_BLOCKRECORD_H

#include "bitstream/BlockHeader.h"
#include "bitstream/ByteCursor.h"

namespace zlibvideo {

/// One block's record in a message body: a 16-bit size, then that many bytes. In version 2 those
/// begin with a header; the rest is the payload. Other versions have only the payload.
struct BlockRecord {
  /// Bytes of the size field in front of every record.
  static constexpr unsigned int kSizeFieldBytes = 2;
  /// The largest value of the size field.
  static constexpr unsigned int kMaxSize = 0xFFFF;

  /// Value of the size field; 0 means that the block is unchanged and nothing follows.
  unsigned int size = 0;
  BlockHeader header;
  ByteSpan payload;

  bool IsEmpty() const { return size == 0; }

  /// Reads the next record. False when it does not lie within what remains, or is too short for
  /// the header bytes that it announces; the cursor must not be used further then, and of `record`
  /// only the size, which is 0 in the first case.
  [[nodiscard]] static bool Read(ByteCursor* cursor, int codecType, BlockRecord* record);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_BLOCKRECORD_H
