#ifndef ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H
#define ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H

#include <cstdint>
#include <optional>
#include <vector>

#include "bitstream/BlockRecord.h"
#include "bitstream/FrameHeader.h"
#include "tools/stream/Failure.h"

namespace zlibvideo {

/// A message taken apart, without decoding anything, by the readers that the decoder uses. Spans
/// point into the message.
struct MessageOutline {
  struct Record {
    BlockRecord record;
    BlockPlace place;
    /// Of its size field, in bytes from the start of the message.
    unsigned int offset = 0;

    /// Bytes that it takes in the message.
    unsigned int Bytes() const { return BlockRecord::kSizeFieldBytes + record.size; }
  };

  /// Absent when the message is too short for one.
  std::optional<FrameHeader> header;
  /// Blocks; 0 unless the header is valid.
  int gridWidth = 0;
  int gridHeight = 0;
  /// Version 2 only.
  std::uint8_t flags = 0;
  /// Value of the palette record's size field; absent when no palette is announced.
  std::optional<unsigned int> paletteSize;
  /// Empty when there is none, or when it reaches past the message and is skipped for that.
  ByteSpan palette;
  /// Passes begun.
  int passes = 0;
  /// Up to the first that cannot be read.
  std::vector<Record> records;
  /// Bytes after the last record that nothing reads.
  unsigned int unread = 0;
  /// What ended the outline early; bytes that are in place but hold nonsense are not a fault here.
  std::optional<Failure> fault;

  static MessageOutline Read(ByteSpan message);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H
