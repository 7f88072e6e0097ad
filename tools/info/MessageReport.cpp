#include "tools/info/MessageReport.h"

#include "grid/Sizes.h"
#include "tools/stream/Diagnosis.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

const char* PaletteOutcome(const MessageOutline& outline, const InspectingDecoder& decoder) {
  if (!outline.paletteSize) return "none";
  if (*outline.paletteSize == 0) return "empty";
  if (outline.palette.size == 0) return "past end";
  const InspectingDecoder::Call& call = decoder.FirstCall();
  if (call.source != outline.palette.data || !call.succeeded) return "unreadable";
  return call.produced == kPaletteBytes ? "installed" : "wrong size";
}

void CountRecord(const MessageOutline::Record& entry, MessageReport* report) {
  const RecordKind kind = KindOf(entry.record, report->outline.header->codecType);
  RecordTally& tally = report->tallies[kind];
  ++tally.count;
  tally.bytes += entry.Bytes();
  if (!IsChange(kind)) return;

  RecordKind& cell = report->cells[report->CellIndex(entry.place)];
  if (!IsChange(cell)) ++report->changedBlocks;
  cell = kind;
}

void CountRecords(MessageReport* report) {
  const auto columns = static_cast<std::size_t>(report->outline.gridWidth);
  report->cells.resize(columns * static_cast<std::size_t>(report->outline.gridHeight));
  for (const MessageOutline::Record& entry : report->outline.records) {
    if (report->failure && report->failure->offset <= entry.offset) break;
    CountRecord(entry, report);
    ++report->decodedRecords;
  }
}

}  // namespace

MessageReport MessageReport::Gather(const FileMessage& message, bool decoded,
                                    const InspectingDecoder& decoder) {
  MessageReport report;
  report.index = message.index;
  report.offset = message.offset;
  report.bytes = message.length;
  report.outline = MessageOutline::Read({message.bytes, message.length});
  if (!decoded) report.failure = Diagnose(decoder, report.outline);
  report.palette = PaletteOutcome(report.outline, decoder);
  CountRecords(&report);
  return report;
}

void StreamSummary::Add(const MessageReport& report) {
  ++messages;
  if (report.failure) {
    ++failed;
  } else if (report.outline.header->IsKeyFrame()) {
    ++keyFrames;
  }
  bytes += report.bytes;
  if (report.bytes > largestBytes || messages == 1) {
    largestBytes = report.bytes;
    largestNumber = report.Number();
  }
  for (const auto& [kind, tally] : report.tallies) {
    tallies[kind].count += tally.count;
    tallies[kind].bytes += tally.bytes;
  }
}

std::string StreamSummary::SizeText() const {
  return HumanBytes(bytes) + ", " + HumanBytes(bytes / messages) + " a message, at most " +
         HumanBytes(largestBytes) + " (message " + std::to_string(largestNumber) + ")";
}

std::string CodecName(int codecType) {
  if (codecType == kCodecTypeVersion1) return "version 1";
  if (codecType == kCodecTypeVersion2) return "version 2";
  return "codec type " + std::to_string(codecType);
}

}  // namespace zlibvideo
