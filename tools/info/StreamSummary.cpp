#include "tools/info/StreamSummary.h"

namespace zlibvideo {

void StreamSummary::Add(const MessageReport& report) {
  ++messages;
  if (!report.IsDecoded()) {
    ++failed;
  } else if (report.outline.header->IsKeyFrame()) {
    ++keyFrames;
  }
  bytes += report.bytes;
  if (report.bytes > largestBytes || messages == 1) {
    largestBytes = report.bytes;
    largestIndex = report.index;
  }
  for (std::size_t kind = 0; kind < kRecordKindCount; ++kind) {
    tallies[kind].count += report.tallies[kind].count;
    tallies[kind].bytes += report.tallies[kind].bytes;
  }
}

RecordTally StreamSummary::AllRecords() const {
  RecordTally all;
  for (const RecordTally& tally : tallies) {
    all.count += tally.count;
    all.bytes += tally.bytes;
  }
  return all;
}

}  // namespace zlibvideo
