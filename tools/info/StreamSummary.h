#ifndef ZLIBVIDEO_TOOLS_INFO_STREAMSUMMARY_H
#define ZLIBVIDEO_TOOLS_INFO_STREAMSUMMARY_H

#include <cstdint>

#include "tools/info/MessageReport.h"

namespace zlibvideo {

/// What the messages of a stream add up to.
struct StreamSummary {
  std::uint64_t messages = 0;
  std::uint64_t failed = 0;
  /// Messages that were decoded and call themselves key frames.
  std::uint64_t keyFrames = 0;
  /// Of all messages, without their lengths in the file.
  std::uint64_t bytes = 0;
  std::uint32_t largestBytes = 0;
  /// Index of the first message of that size.
  std::uint64_t largestIndex = 0;
  RecordTallies tallies = {};

  void Add(const MessageReport& report);
  /// Over all kinds of records.
  RecordTally AllRecords() const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_STREAMSUMMARY_H
