#ifndef ZLIBVIDEO_BITSTREAM_STANDALONEFINDER_H
#define ZLIBVIDEO_BITSTREAM_STANDALONEFINDER_H

#include "../host/Export.h"
#include "FrameHeader.h"

namespace zlibvideo {

/// The state that a decoder keeps from message to message, as bits.
enum DecoderState : unsigned int {
  kStateNone = 0,
  kStatePixels = 1,         ///< of the blocks
  kStatePreviousData = 2,   ///< reference of primed and banded payloads, version 2 alone
  kStateConvertedData = 4,  ///< dictionary of primed colour-reduced payloads, version 2 alone
  kStatePalette = 8,        ///< version 2 alone
  kStateAll = 15,
};

/// Finds the messages of a stream that stand alone. If a decoder begins with such a message, that
/// picture and every later picture are as if it had decoded all messages. A key frame need not
/// stand alone, and a message may without being a key frame.
///
/// Reads the block records of the messages in their order. Decompresses nothing and allocates
/// nothing: it assumes that all payloads are good. A payload that is damaged, or ends before its
/// block is full, leaves the block as earlier messages made it: after decoding, the result of the
/// message and `BlockedCodec::IsComplete` tell, unless the message fills the block again. A damaged
/// palette leaves the palette before it. A later direct record without a payload turns bytes behind
/// the pixels, which no message replaces, into reference data. Messages that found no memory are
/// not accounted for.
class ZLIBVIDEO_EXPORT StandaloneFinder {
 public:
  /// `before` is the state, of `DecoderState`, that messages before the first may have changed.
  /// Nothing, from the start of a stream. Within a stream of version 1, the pixels. Otherwise all:
  /// then a message must replace the palette as well.
  explicit StandaloneFinder(unsigned int before) : fChanged(before) {}

  /// Whether the next message, of `length` bytes, stands alone. False for a message that fails
  /// because its records do not lie within it.
  [[nodiscard]] bool Next(const unsigned char* message, unsigned int length);

 private:
  /// State that messages so far may have changed.
  unsigned int fChanged;
  /// Of the last message that had a valid header. Not valid before.
  FrameHeader fHeader;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_STANDALONEFINDER_H
