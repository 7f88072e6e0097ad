#ifndef ZLIBVIDEO_TOOLS_INFO_MESSAGEREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_MESSAGEREPORT_H

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "tools/info/RecordKind.h"
#include "tools/stream/InspectingDecoder.h"
#include "tools/stream/MessageFile.h"
#include "tools/stream/MessageOutline.h"

namespace zlibvideo {

/// What became of a message's palette record.
enum class PaletteOutcome {
  kNone,
  kInstalled,
  kEmpty,       ///< announced with a size of 0
  kPastEnd,     ///< reaches past the message; only its size was read
  kUnreadable,  ///< not a complete zlib stream
  kWrongSize,   ///< a stream of anything but 384 bytes
};
/// As in JSON; for people as well.
const char* NameOf(PaletteOutcome outcome);

struct RecordTally {
  std::uint64_t count = 0;
  /// With their size fields.
  std::uint64_t bytes = 0;
};
/// One for each of `kRecordKinds`.
using RecordTallies = std::array<RecordTally, kRecordKinds.size()>;

/// All that is reported of one message, gathered once, whatever the form it is written in.
struct MessageReport {
  /// Gathers the report of `message`, which `decoder` has just decoded or failed to decode. Spans
  /// in it are valid as long as the message.
  static MessageReport Gather(const FileMessage& message, bool decoded,
                              const InspectingDecoder& decoder);

  /// From 1, as people are told of messages.
  std::uint64_t Number() const { return index + 1; }

  /// From 0.
  std::uint64_t index = 0;
  /// Where in the file the message begins after its length.
  std::uint64_t offset = 0;
  std::uint32_t bytes = 0;
  MessageOutline outline;
  PaletteOutcome palette = PaletteOutcome::kNone;
  /// How many of the outline's records were decoded: in a failed message, those before the fault.
  std::size_t decodedRecords = 0;
  /// Of those records.
  RecordTallies tallies = {};
  /// For each block, the last of them that was not empty: `outline.gridHeight` rows of
  /// `outline.gridWidth` cells, row 0 at the bottom of the picture.
  std::vector<RecordKind> cells;
  std::size_t changedBlocks = 0;
  /// Absent when the message was decoded.
  std::optional<Failure> failure;

  bool IsDecoded() const { return !failure.has_value(); }
  /// Whether the message got as far as its grid.
  bool HasGrid() const { return outline.gridWidth > 0 && outline.gridHeight > 0; }
  RecordKind CellAt(int row, int column) const { return cells[CellIndex({1, row, column})]; }
  std::size_t CellIndex(const BlockPlace& place) const {
    return static_cast<std::size_t>(place.row) * static_cast<std::size_t>(outline.gridWidth) +
           static_cast<std::size_t>(place.column);
  }
};

/// What the messages of a stream add up to.
struct StreamSummary {
  std::uint64_t messages = 0;
  std::uint64_t failed = 0;
  /// Messages that were decoded and call themselves key frames.
  std::uint64_t keyFrames = 0;
  /// Of all messages, without their lengths in the file.
  std::uint64_t bytes = 0;
  std::uint32_t largestBytes = 0;
  /// Number, from 1, of the first message of that size.
  std::uint64_t largestNumber = 0;
  RecordTallies tallies = {};

  void Add(const MessageReport& report);
  /// Over all kinds of records.
  RecordTally AllRecords() const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_MESSAGEREPORT_H
