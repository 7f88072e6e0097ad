#include "tools/info/TextReport.h"

#include <vector>

#include "bitstream/CodecType.h"
#include "tools/common/Diagnosis.h"
#include "tools/info/ChangeBar.h"
#include "tools/info/Format.h"

namespace zlibvideo {
namespace {

using Style = Terminal::Style;

constexpr std::size_t kIndexWidth = 4;
constexpr std::size_t kFrameWidth = 8;
constexpr std::size_t kFlagsWidth = 5;
constexpr std::size_t kPaletteWidth = 5;
constexpr std::size_t kPassesWidth = 5;
constexpr std::size_t kBytesWidth = 11;
constexpr std::size_t kKindWidth = 7;
constexpr std::size_t kPercentWidth = 9;
/// To where the notes under a row begin.
constexpr const char* kNoteIndent = "        ";

/// Kinds that the table counts together, under one heading.
struct KindColumn {
  const char* heading;
  std::vector<RecordKind> kinds;
};
using KindColumns = std::vector<KindColumn>;

/// The kinds that a message of this codec type can have.
const KindColumns& ColumnsOf(int codecType) {
  static const KindColumns kVersion1 = {{"empty", {RecordKind::kEmpty}},
                                        {"direct", {RecordKind::kDirect}}};
  static const KindColumns kVersion2 = {
      {"empty", {RecordKind::kEmpty}},
      {"direct", {RecordKind::kDirect, RecordKind::kReducedDirect}},
      {"primed", {RecordKind::kPrimed, RecordKind::kReducedPrimed}},
      {"banded", {RecordKind::kBanded, RecordKind::kReducedBanded}},
      {"p+band", {RecordKind::kPrimedBanded, RecordKind::kReducedPrimedBanded}},
      {"interm", {RecordKind::kIntermediate, RecordKind::kReducedIntermediate}},
      {"other", {RecordKind::kUnconvertible}},
      {"(red.)",
       {RecordKind::kReducedDirect, RecordKind::kReducedPrimed, RecordKind::kReducedBanded,
        RecordKind::kReducedPrimedBanded, RecordKind::kReducedIntermediate}},
  };
  static const KindColumns kOther = {{"empty", {RecordKind::kEmpty}},
                                     {"skipped", {RecordKind::kSkipped}}};
  if (codecType == kCodecTypeVersion1) return kVersion1;
  return codecType == kCodecTypeVersion2 ? kVersion2 : kOther;
}

Style StyleOf(RecordKind kind) {
  switch (kind) {
    case RecordKind::kEmpty:
    case RecordKind::kSkipped:
      return Style::kDim;
    case RecordKind::kDirect:
    case RecordKind::kReducedDirect:
      return Style::kBlue;
    case RecordKind::kPrimed:
    case RecordKind::kReducedPrimed:
      return Style::kMagenta;
    case RecordKind::kBanded:
    case RecordKind::kReducedBanded:
      return Style::kCyan;
    case RecordKind::kPrimedBanded:
    case RecordKind::kReducedPrimedBanded:
      return Style::kGreen;
    default:
      return Style::kYellow;
  }
}

std::string Size(int width, int height, const Terminal& terminal) {
  return std::to_string(width) + terminal.Either(" × ", " x ") + std::to_string(height);
}

std::string CodecName(int codecType) {
  if (codecType == kCodecTypeVersion1) return "version 1";
  if (codecType == kCodecTypeVersion2) return "version 2";
  return "codec type " + std::to_string(codecType) + " (no blocks to decode)";
}

std::string FrameName(const FrameHeader& header) {
  return header.IsKeyFrame() ? "key" : "type " + std::to_string(header.frameType);
}

std::string FlagsName(const MessageReport& report) {
  if (report.outline.header->codecType != kCodecTypeVersion2) return "-";
  constexpr char kDigits[] = "0123456789ABCDEF";
  const unsigned int flags = report.outline.flags;
  return {'0', 'x', kDigits[flags >> 4], kDigits[flags & 0xF]};
}

const char* PaletteName(PaletteOutcome outcome) {
  if (outcome == PaletteOutcome::kNone) return "-";
  return outcome == PaletteOutcome::kInstalled ? "new" : "kept";
}

bool SameGeometry(const FrameHeader& a, const FrameHeader& b) {
  return a.codecType == b.codecType && a.imageWidth == b.imageWidth &&
         a.imageHeight == b.imageHeight && a.blockWidth == b.blockWidth &&
         a.blockHeight == b.blockHeight;
}

std::string Headings(int codecType) {
  std::string line = AlignRight("#", kIndexWidth) + "  " + AlignLeft("frame", kFrameWidth) +
                     AlignLeft("flags", kFlagsWidth) + AlignRight("pal", kPaletteWidth) +
                     AlignRight("pass", kPassesWidth) + AlignRight("bytes", kBytesWidth);
  for (const KindColumn& column : ColumnsOf(codecType)) {
    line += AlignRight(column.heading, kKindWidth);
  }
  return line + AlignRight("changed", kPercentWidth) + "  left to right";
}

std::string Counts(const MessageReport& report, const Terminal& terminal) {
  std::string line;
  for (const KindColumn& column : ColumnsOf(report.outline.header->codecType)) {
    std::uint64_t count = 0;
    for (const RecordKind kind : column.kinds) count += report.TallyOf(kind).count;
    const std::string text = AlignRight(count == 0 ? "-" : std::to_string(count), kKindWidth);
    line += terminal.Styled(text, count == 0 ? Style::kDim : StyleOf(column.kinds.front()));
  }
  return line;
}

}  // namespace

std::string TextReport::Mark(bool good) const {
  const Terminal& terminal = fOptions.terminal;
  return good ? terminal.Styled(terminal.Either("✓", "+"), Style::kGreen)
              : terminal.Styled(terminal.Either("✗", "!"), Style::kRed);
}

void TextReport::Write(const MessageReport& report, const FrameView& /*frame*/) {
  if (report.HasGrid() && !(fGeometry && SameGeometry(*fGeometry, *report.outline.header))) {
    fGeometry = report.outline.header;
    WriteGeometry(report);
  }
  WriteRow(report);
  WriteNotes(report);
  if (fOptions.maps && report.HasGrid()) WriteMap(report);
}

void TextReport::WriteGeometry(const MessageReport& report) {
  const Terminal& terminal = fOptions.terminal;
  const FrameHeader& header = *report.outline.header;
  const std::string dot = terminal.Either(" · ", ", ");
  const std::string line = CodecName(header.codecType) + dot + "picture " +
                           Size(header.imageWidth, header.imageHeight, terminal) + dot + "blocks " +
                           Size(header.blockWidth, header.blockHeight, terminal) + dot + "grid " +
                           Size(report.outline.gridWidth, report.outline.gridHeight, terminal) +
                           " = " + Counted(report.cells.size(), "block");
  fOutput.Write((report.index == 0 ? "" : "\n") + terminal.Styled(line, Style::kBold) + "\n" +
                terminal.Styled(Headings(header.codecType), Style::kDim) + "\n");
}

void TextReport::WriteRow(const MessageReport& report) {
  const Terminal& terminal = fOptions.terminal;
  std::string line = AlignRight(std::to_string(report.index), kIndexWidth) + "  ";
  if (!report.HasGrid()) {
    fOutput.Write(line + HumanBytes(report.bytes) + "\n");
    return;
  }
  const bool key = report.outline.header->IsKeyFrame();
  const std::string frame = AlignLeft(FrameName(*report.outline.header), kFrameWidth);
  line += key ? terminal.Styled(frame, Style::kBold) : frame;
  line += AlignLeft(FlagsName(report), kFlagsWidth) +
          AlignRight(PaletteName(report.palette), kPaletteWidth) +
          AlignRight(std::to_string(report.outline.passes), kPassesWidth) +
          AlignRight(HumanBytes(report.bytes), kBytesWidth) + Counts(report, terminal) +
          AlignRight(Percent(report.changedBlocks, report.cells.size()), kPercentWidth) + "  " +
          ChangeBar(report, terminal);
  fOutput.Write(line + "\n");
}

void TextReport::WriteNotes(const MessageReport& report) {
  if (report.failure) {
    fOutput.Write(kNoteIndent + Mark(false) + " " + ExplainFailure(*report.failure) + "\n");
  }
  if (report.palette != PaletteOutcome::kNone && report.palette != PaletteOutcome::kInstalled) {
    fOutput.Write(std::string(kNoteIndent) + "the palette record of " +
                  Counted(*report.outline.paletteSize, "byte") +
                  " brings no palette: " + NameOf(report.palette) + "\n");
  }
  if (report.outline.unread != 0) {
    fOutput.Write(kNoteIndent + Counted(report.outline.unread, "byte") +
                  " behind the last record: not read\n");
  }
}

void TextReport::WriteMap(const MessageReport& report) {
  for (int row = report.outline.gridHeight - 1; row >= 0; --row) {
    std::string line = kNoteIndent;
    for (int column = 0; column < report.outline.gridWidth; ++column) {
      const RecordKind kind = report.CellAt(row, column);
      const bool failed = report.failure && report.failure->block &&
                          report.failure->block->row == row &&
                          report.failure->block->column == column;
      const char letter = failed ? '!' : WordsOf(kind).letter;
      line += fOptions.terminal.Styled({letter}, failed ? Style::kRed : StyleOf(kind));
    }
    fOutput.Write(line + "\n");
  }
}

void TextReport::Finish(const StreamSummary& summary, const std::string& problem) {
  const std::uint64_t decoded = summary.messages - summary.failed;
  fOutput.Write("\n");
  if (decoded != 0 || summary.failed == 0) {
    fOutput.Write(Mark(true) + " " + Counted(decoded, "message") + " decoded, " +
                  Counted(summary.keyFrames, "key frame") + " among them\n");
  }
  if (summary.failed != 0) {
    fOutput.Write(Mark(false) + " " + Counted(summary.failed, "message") + " failed\n");
  }
  if (!problem.empty()) fOutput.Write(Mark(false) + " " + problem + "\n");
  if (summary.messages != 0) {
    fOutput.Write("  " + HumanBytes(summary.bytes) + ", " +
                  HumanBytes(summary.bytes / summary.messages) + " a message, at most " +
                  HumanBytes(summary.largestBytes) + " (message " +
                  std::to_string(summary.largestIndex) + ")\n");
    WriteRecordTable(summary);
  }
  fOutput.Commit();
}

void TextReport::WriteRecordTable(const StreamSummary& summary) {
  constexpr std::size_t kLabelWidth = 26;
  const Terminal& terminal = fOptions.terminal;
  const RecordTally all = summary.AllRecords();
  const std::string headings = "  " + AlignLeft("records", kLabelWidth) +
                               AlignRight("count", kBytesWidth) + AlignRight("", kPercentWidth) +
                               AlignRight("bytes", kBytesWidth);
  fOutput.Write("\n" + terminal.Styled(headings, Style::kDim) + "\n");
  for (std::size_t kind = 0; kind < kRecordKindCount; ++kind) {
    const RecordTally& tally = summary.tallies[kind];
    if (tally.count == 0) continue;
    const auto& words = kRecordKindWords[kind];
    fOutput.Write(terminal.Styled({words.letter, ' '}, StyleOf(static_cast<RecordKind>(kind))) +
                  AlignLeft(words.label, kLabelWidth) +
                  AlignRight(std::to_string(tally.count), kBytesWidth) +
                  AlignRight(Percent(tally.count, all.count), kPercentWidth) +
                  AlignRight(HumanBytes(tally.bytes), kBytesWidth) +
                  AlignRight(Percent(tally.bytes, all.bytes), kPercentWidth) + "\n");
  }
}

}  // namespace zlibvideo
