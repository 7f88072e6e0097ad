#ifndef ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H
#define ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"

namespace zlibvideo {

/// One record's place in its message. Rows and columns count from 0, row 0 at the bottom of the
/// picture; passes count from 1.
struct BlockPlace {
  int pass = 1;
  int row = 0;
  int column = 0;

  bool operator==(const BlockPlace&) const = default;
};

/// Why a message was not decoded.
struct Failure {
  /// What is wrong, as a sentence without its full stop.
  std::string what;
  /// Where, in bytes from the start of the message: of a record, the start of its size field.
  unsigned int offset = 0;
  /// The block whose record it is, if it is a record.
  std::optional<BlockPlace> block;
};

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
