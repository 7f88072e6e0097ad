#include "tools/info/MessageReport.h"

#include "bitstream/MessageBody.h"
#include "grid/Sizes.h"
#include "tools/stream/Diagnosis.h"

namespace zlibvideo {
namespace {

PaletteOutcome FindPaletteOutcome(const MessageOutline& outline, const InspectingDecoder& decoder) {
  if (!outline.paletteSize) return PaletteOutcome::kNone;
  if (*outline.paletteSize == 0) return PaletteOutcome::kEmpty;
  if (outline.palette.size == 0) return PaletteOutcome::kPastEnd;
  const InspectingDecoder::Call& call = decoder.FirstCall();
  if (call.source != outline.palette.data || !call.succeeded) return PaletteOutcome::kUnreadable;
  return call.produced == kPaletteBytes ? PaletteOutcome::kInstalled : PaletteOutcome::kWrongSize;
}

void CountRecord(const MessageOutline::Record& entry, MessageReport* report) {
  const RecordKind kind = RecordKind::Of(entry.record, report->outline.header->codecType);
  RecordTally& tally = report->tallies[kind.Index()];
  ++tally.count;
  tally.bytes += entry.Bytes();
  if (!kind.IsChange()) return;

  RecordKind& cell = report->cells[report->CellIndex(entry.place)];
  if (!cell.IsChange()) ++report->changedBlocks;
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

const char* NameOf(PaletteOutcome outcome) {
  switch (outcome) {
    case PaletteOutcome::kNone:
      return "none";
    case PaletteOutcome::kInstalled:
      return "installed";
    case PaletteOutcome::kEmpty:
      return "empty";
    case PaletteOutcome::kPastEnd:
      return "past end";
    case PaletteOutcome::kUnreadable:
      return "unreadable";
    case PaletteOutcome::kWrongSize:
      return "wrong size";
  }
  return "";
}

MessageReport MessageReport::Gather(const FileMessage& message, bool decoded,
                                    const InspectingDecoder& decoder) {
  MessageReport report;
  report.index = message.index;
  report.offset = message.offset;
  report.bytes = message.length;
  report.outline = MessageOutline::Read({message.bytes, message.length});
  if (!decoded) report.failure = Diagnose(decoder, report.outline);
  report.palette = FindPaletteOutcome(report.outline, decoder);
  CountRecords(&report);
  return report;
}

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
    largestNumber = report.Number();
  }
  for (std::size_t kind = 0; kind < kRecordKinds.size(); ++kind) {
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
