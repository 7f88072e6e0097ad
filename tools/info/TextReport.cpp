#include <memory>
#include <optional>
#include <string>

#include "bitstream/FrameHeader.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/info/MessageTable.h"
#include "tools/info/ReportWriter.h"
#include "tools/stream/Diagnosis.h"
#include "tools/terminal/Terminal.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

using Style = Terminal::Style;

/// To where the notes under a row begin.
constexpr const char* kNoteIndent = "        ";

std::string Size(int width, int height, const Terminal& terminal) {
  return std::to_string(width) + terminal.Either(" × ", " x ") + std::to_string(height);
}

std::string CodecName(int codecType) {
  if (codecType == kCodecTypeVersion1) return "version 1";
  if (codecType == kCodecTypeVersion2) return "version 2";
  return "codec type " + std::to_string(codecType);
}

bool SameGeometry(const FrameHeader& a, const FrameHeader& b) {
  return a.codecType == b.codecType && a.imageWidth == b.imageWidth &&
         a.imageHeight == b.imageHeight && a.blockWidth == b.blockWidth &&
         a.blockHeight == b.blockHeight;
}

/// The report for people: a table with a line for each message, what is wrong under those that
/// failed, and a summary.
class TextReport : public ReportWriter {
 public:
  explicit TextReport(bool maps) : fMaps(maps) {}

  void Write(const MessageReport& report, const FrameView& frame) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  void WriteGeometry(const MessageReport& report);
  void WriteHeadings();
  void WriteNotes(const MessageReport& report);
  void WriteMap(const MessageReport& report);
  void WriteRecordTable(const StreamSummary& summary);
  std::string Mark(bool good) const;

  const Terminal fTerminal = Terminal::OfStandardOutput();
  const bool fMaps;
  OutputFile fOutput{kStandardStreamName};
  MessageTable fTable{fTerminal};
  /// As last written; messages that share it follow one another in one table.
  std::optional<FrameHeader> fGeometry;
};

std::string TextReport::Mark(bool good) const {
  return good ? fTerminal.Styled(fTerminal.Either("✓", "+"), Style::kGreen)
              : fTerminal.Styled(fTerminal.Either("✗", "!"), Style::kRed);
}

void TextReport::Write(const MessageReport& report, const FrameView& /*frame*/) {
  if (report.HasGrid() && !(fGeometry && SameGeometry(*fGeometry, *report.outline.header))) {
    fGeometry = report.outline.header;
    fTable.Begin(report);
    WriteGeometry(report);
    WriteHeadings();
  } else if (report.HasGrid() && fTable.AddColumnsFor(report)) {
    WriteHeadings();
  }
  fOutput.Write((report.HasGrid() ? fTable.Row(report) : MessageTable::RowWithoutGrid(report)) +
                "\n");
  WriteNotes(report);
  if (fMaps && report.HasGrid()) WriteMap(report);
}

void TextReport::WriteGeometry(const MessageReport& report) {
  const FrameHeader& header = *report.outline.header;
  const std::string dot = fTerminal.Either(" · ", ", ");
  const std::string line = CodecName(header.codecType) + dot + "picture " +
                           Size(header.imageWidth, header.imageHeight, fTerminal) + dot +
                           "blocks " + Size(header.blockWidth, header.blockHeight, fTerminal) +
                           dot + "grid " +
                           Size(report.outline.gridWidth, report.outline.gridHeight, fTerminal) +
                           " = " + Counted(report.cells.size(), "block");
  fOutput.Write((report.index == 0 ? "" : "\n") + fTerminal.Styled(line, Style::kBold) + "\n");
}

void TextReport::WriteHeadings() {
  fOutput.Write(fTerminal.Styled(fTable.Headings(), Style::kDim) + "\n");
}

void TextReport::WriteNotes(const MessageReport& report) {
  if (report.failure) {
    fOutput.Write(kNoteIndent + Mark(false) + " " + ExplainFailure(*report.failure) + "\n");
  }
  if (report.palette != PaletteOutcome::kNone && report.palette != PaletteOutcome::kInstalled) {
    fOutput.Write(std::string(kNoteIndent) + "the palette record of " +
                  Counted(*report.outline.paletteSize, "byte") +
                  " installs no palette: " + NameOf(report.palette) + "\n");
  }
  if (report.outline.unread != 0) {
    fOutput.Write(kNoteIndent + Counted(report.outline.unread, "byte") + " after the last record " +
                  (report.outline.unread == 1 ? "was" : "were") + " not read\n");
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
      const char letter = failed ? '!' : kind.Letter();
      line += fTerminal.Styled({letter}, failed ? Style::kRed : StyleOf(kind.form));
    }
    fOutput.Write(line + "\n");
  }
}

void TextReport::Finish(const StreamSummary& summary, const std::string& problem) {
  const std::uint64_t decoded = summary.messages - summary.failed;
  fOutput.Write("\n");
  if (decoded != 0) {
    fOutput.Write(Mark(true) + " " + Counted(decoded, "message") + " decoded (" +
                  Counted(summary.keyFrames, "key frame") + ")\n");
  }
  if (summary.failed != 0) {
    fOutput.Write(Mark(false) + " " + Counted(summary.failed, "message") + " failed\n");
  }
  if (!problem.empty()) fOutput.Write(Mark(false) + " " + Printable(problem) + "\n");
  if (summary.messages != 0) {
    fOutput.Write("  " + HumanBytes(summary.bytes) + ", " +
                  HumanBytes(summary.bytes / summary.messages) + " a message, at most " +
                  HumanBytes(summary.largestBytes) + " (message " +
                  std::to_string(summary.largestNumber) + ")\n");
    if (summary.AllRecords().count != 0) WriteRecordTable(summary);
  }
  fOutput.Commit();
}

void TextReport::WriteRecordTable(const StreamSummary& summary) {
  constexpr std::size_t kLabelWidth = 26;
  constexpr std::size_t kBytesWidth = 11;
  constexpr std::size_t kPercentWidth = 9;
  const RecordTally all = summary.AllRecords();
  const std::string headings = "  " + AlignLeft("records", kLabelWidth) +
                               AlignRight("count", kBytesWidth) + AlignRight("", kPercentWidth) +
                               AlignRight("bytes", kBytesWidth);
  fOutput.Write("\n" + fTerminal.Styled(headings, Style::kDim) + "\n");
  for (const RecordKind& kind : kRecordKinds) {
    const RecordTally& tally = summary.tallies[kind.Index()];
    if (tally.count == 0) continue;
    fOutput.Write(fTerminal.Styled({kind.Letter(), ' '}, StyleOf(kind.form)) +
                  AlignLeft(kind.Label(), kLabelWidth) +
                  AlignRight(std::to_string(tally.count), kBytesWidth) +
                  AlignRight(Percent(tally.count, all.count), kPercentWidth) +
                  AlignRight(HumanBytes(tally.bytes), kBytesWidth) +
                  AlignRight(Percent(tally.bytes, all.bytes), kPercentWidth) + "\n");
  }
}

}  // namespace

std::unique_ptr<ReportWriter> MakeTextReport(bool maps) {
  return std::make_unique<TextReport>(maps);
}

}  // namespace zlibvideo
