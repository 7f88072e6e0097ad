#ifndef ZLIBVIDEO_BITSTREAM_MESSAGEBODY_H
#define ZLIBVIDEO_BITSTREAM_MESSAGEBODY_H

#include <cstdint>

#include "bitstream/ByteCursor.h"
#include "grid/BlockFormat.h"

/// The parts of a message body, which follows the frame header. In version 2 it begins with a flags
/// byte and, if a flag announces it, a palette record. Block records follow, a record for each
/// block of the grid.
namespace zlibvideo {

/// Bits of the flags byte. The other bits are not read.
inline constexpr unsigned int kFlagPalette = 0x01;
inline constexpr unsigned int kFlagSecondPass = 0x02;

/// Reads a palette record: a 16-bit size, then a zlib stream of that size, which should hold
/// `kPaletteBytes`. False if the size itself does not fit. If the size is 0 or the stream reaches
/// past the end, only the size is read and `*compressed` is empty.
[[nodiscard]] bool ReadPaletteRecord(ByteCursor* cursor, ByteSpan* compressed);

/// The bytes before the payload in a block record of version 2:
///
///   byte 0   format (grid/BlockFormat.h)
///   byte 1   first row of the band    } only if the format
///   byte 2   rows of the band         } announces a band
///
/// Band fields that are not announced are 0. In other versions, which have no header, all fields
/// are 0.
struct BlockHeader {
  static constexpr unsigned int kMaxSize = 3;

  std::uint8_t format = 0;
  /// Rows of the block, in the order of its buffer.
  std::uint8_t diffRowStart = 0;
  std::uint8_t diffRowCount = 0;

  /// Bytes of the header in a record.
  unsigned int Size() const { return HasBand(format) ? kMaxSize : 1; }

  /// False if the bytes that the format announces do not fit. Then neither the cursor nor `*header`
  /// may be used further.
  [[nodiscard]] static bool Read(ByteCursor* cursor, BlockHeader* header);
  /// The inverse of `Read`, for makers of messages: the first `Size` bytes are the header.
  void Write(unsigned char (&bytes)[kMaxSize]) const;
};

/// The record of a block: a 16-bit size, then that many bytes. In version 2 a header comes before
/// the payload. In other versions there is only the payload.
struct BlockRecord {
  /// Bytes of the size field.
  static constexpr unsigned int kSizeFieldBytes = 2;
  /// The largest value of the size field.
  static constexpr unsigned int kMaxSize = 0xFFFF;

  /// Value of the size field. 0 means that the block is unchanged and that nothing follows.
  unsigned int size = 0;
  BlockHeader header;
  ByteSpan payload;

  bool IsEmpty() const { return size == 0; }

  /// Reads the next record. False if the record reaches past the end, or is too short for the
  /// header that its format announces. Then the cursor may not be used further, and of `*record`
  /// only the size, which is 0 in the first case.
  [[nodiscard]] static bool Read(ByteCursor* cursor, int codecType, BlockRecord* record);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_MESSAGEBODY_H
