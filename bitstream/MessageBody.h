#ifndef ZLIBVIDEO_BITSTREAM_MESSAGEBODY_H
#define ZLIBVIDEO_BITSTREAM_MESSAGEBODY_H

#include <cstdint>

#include "bitstream/ByteCursor.h"

namespace zlibvideo {

/// What opens the body of a version-2 message, after the frame header: a flags byte and, when
/// announced, a palette record. Block records follow.

/// Bits of the flags byte; the others are not read.
inline constexpr unsigned int kFlagPalette = 0x01;
inline constexpr unsigned int kFlagSecondPass = 0x02;

/// Reads a palette record: a 16-bit size and that many bytes of a zlib stream, which should hold
/// `kPaletteBytes`. False when not even its size is there. A record of size 0, or one that
/// reaches past what remains, is read as its two size bytes alone and leaves `compressed` empty.
[[nodiscard]] inline bool ReadPaletteRecord(ByteCursor* cursor, ByteSpan* compressed) {
  *compressed = {};
  std::uint16_t size = 0;
  if (!cursor->ReadU16(&size)) return false;
  // A record that does not fit does not fail the message here: what follows the size is then parsed
  // as block records, and those decide.
  static_cast<void>(cursor->ReadSpan(size, compressed));
  return true;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_MESSAGEBODY_H
