#ifndef ZLIBVIDEO_TOOLS_INFO_MESSAGEREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_MESSAGEREPORT_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/info/RecordKind.h"
#include "tools/stream/InspectingDecoder.h"
#include "tools/stream/MessageFile.h"
#include "tools/stream/MessageOutline.h"

namespace zlibvideo {

struct RecordTally {
  std::uint64_t count = 0;
  /// With their size fields.
  std::uint64_t bytes = 0;
};
/// Of the kinds that there are records of.
using RecordTallies = std::map<RecordKind, RecordTally>;

/// All facts that reports have about a message.
struct MessageReport {
  /// Gathers the report of `message`, which `decoder` has just decoded or failed to decode. Spans
  /// in it are valid as long as the message.
  static MessageReport Gather(const FileMessage& message, bool decoded,
                              const InspectingDecoder& decoder);

  /// From 0.
  std::uint64_t index = 0;
  /// Bytes from the start of the file to the message, behind its length.
  std::uint64_t offset = 0;
  std::uint32_t bytes = 0;
  MessageOutline outline;
  /// "none", "installed", "empty", "past end" (it reaches past the message), "unreadable" (it is no
  /// complete zlib stream) or "wrong size" (it has more or fewer bytes than a palette).
  const char* palette = "none";
  /// How many of the outline's records were decoded: in a failed message, all before the fault.
  std::size_t decodedRecords = 0;
  /// Of the decoded records.
  RecordTallies tallies;
  /// For each block, the kind of its last decoded record that was not empty: `outline.gridHeight`
  /// rows of `outline.gridWidth` cells, row 0 at the bottom of the picture.
  std::vector<RecordKind> cells;
  std::size_t changedBlocks = 0;
  /// Absent if the message was decoded.
  std::optional<Failure> failure;

  /// From 1, as people count.
  std::uint64_t Number() const { return index + 1; }
  /// Whether the header is valid.
  bool HasGrid() const { return outline.gridWidth > 0 && outline.gridHeight > 0; }
  std::size_t CellIndex(const BlockPlace& place) const {
    return static_cast<std::size_t>(place.row) * static_cast<std::size_t>(outline.gridWidth) +
           static_cast<std::size_t>(place.column);
  }
};

/// The sums over the messages of a stream.
struct StreamSummary {
  std::uint64_t messages = 0;
  std::uint64_t failed = 0;
  /// Of the decoded messages.
  std::uint64_t keyFrames = 0;
  /// Of all messages, without their lengths in the file.
  std::uint64_t bytes = 0;
  std::uint32_t largestBytes = 0;
  /// Number of the first message of that size.
  std::uint64_t largestNumber = 0;
  RecordTallies tallies;

  void Add(const MessageReport& report);
  /// "2.0 MB, 70.2 kB a message, at most 107.5 kB (message 9)".
  std::string SizeText() const;
};

/// "version 1", "version 2", or "codec type N" of any other.
std::string CodecName(int codecType);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_MESSAGEREPORT_H
