#ifndef ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H
#define ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"

namespace zlibvideo {

/// The place of a record in its message. Rows and columns count from 0, from the bottom left of the
/// picture. Passes count from 1.
struct BlockPlace {
  int pass = 1;
  int row = 0;
  int column = 0;

  bool operator==(const BlockPlace&) const = default;
};

/// Why a message was not decoded.
struct Failure {
  /// The fault, as the end of a sentence about the message or, if `block` is set, about the block.
  std::string what;
  /// Bytes from the start of the message to the fault. A record begins with its size field.
  unsigned int offset = 0;
  /// The block of the faulty record, if a record is at fault.
  std::optional<BlockPlace> block;
};

/// The parts of a message, found without decoding anything, by the readers that the decoder uses.
/// Spans point into the message.
struct MessageOutline {
  struct Record {
    BlockRecord record;
    BlockPlace place;
    /// Bytes from the start of the message to the record's size field.
    unsigned int offset = 0;

    /// Bytes of the record in the message, with its size field.
    unsigned int Bytes() const { return BlockRecord::kSizeFieldBytes + record.size; }
  };

  /// Absent if the message is too short for a header.
  std::optional<FrameHeader> header;
  /// Blocks, or 0 if the header is not valid.
  int gridWidth = 0;
  int gridHeight = 0;
  /// Version 2 only.
  std::uint8_t flags = 0;
  /// Value of the palette record's size field. Absent if no palette is announced.
  std::optional<unsigned int> paletteSize;
  /// Empty without a palette, and if the palette record reaches past the message: the decoder then
  /// skips its size field alone.
  ByteSpan palette;
  /// Passes begun.
  int passes = 0;
  /// All records before the fault.
  std::vector<Record> records;
  /// Bytes after the last record. The decoder does not read them.
  unsigned int unread = 0;
  /// Why the outline ends early. Payloads are not looked into.
  std::optional<Failure> fault;

  static MessageOutline Read(ByteSpan message);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_MESSAGEOUTLINE_H
