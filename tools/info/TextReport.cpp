#include <unistd.h>

#include <cctype>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bitstream/FrameHeader.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/info/ReportWriter.h"
#include "tools/stream/Diagnosis.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

// Both tables fit 60 characters, but for long lists of records.
constexpr std::size_t kNumberWidth = 5;
constexpr std::size_t kTypeWidth = 4;
constexpr std::size_t kBytesWidth = 10;
constexpr std::size_t kPercentWidth = 8;
constexpr std::size_t kLabelWidth = 23;
constexpr std::size_t kCountWidth = 8;

/// Before the lines under a row.
constexpr const char* kIndent = "      ";
constexpr char kFailed = '!';

/// Attributes of text, as terminals number them.
enum class Style {
  kBold = 1,
  kDim = 2,
  kRed = 31,
  kGreen = 32,
  kYellow = 33,
  kBlue = 34,
  kMagenta = 35,
  kCyan = 36
};

Style StyleOf(RecordKind kind) {
  switch (std::toupper(TextOf(kind).letter)) {
    case '.':
    case '-':
      return Style::kDim;
    case 'D':
      return Style::kBlue;
    case 'P':
      return Style::kMagenta;
    case 'B':
      return Style::kCyan;
    case 'X':
      return Style::kGreen;
    default:
      return Style::kYellow;
  }
}

/// Whether standard output is a terminal, and the environment does not refuse colour.
bool HasColor() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string_view(value == nullptr ? "" : value);
  };
  return isatty(STDOUT_FILENO) == 1 && variable("NO_COLOR").empty() && variable("TERM") != "dumb";
}

bool SameGeometry(const FrameHeader& a, const FrameHeader& b) {
  return a.codecType == b.codecType && a.imageWidth == b.imageWidth &&
         a.imageHeight == b.imageHeight && a.blockWidth == b.blockWidth &&
         a.blockHeight == b.blockHeight;
}

class TextReport : public ReportWriter {
 public:
  explicit TextReport(bool maps) : fMaps(maps) {}

  void Write(const MessageReport& report, const FrameView& frame) override;
  void WriteHeldBack(const std::string& sentence) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  void WriteGeometry(const MessageReport& report);
  std::string Row(const MessageReport& report) const;
  /// Letter and number of each kind that the message has, and anything else that is rare.
  std::string Records(const MessageReport& report) const;
  void WriteMap(const MessageReport& report);
  void WriteRecordTable(const RecordTallies& tallies);
  std::string Styled(const std::string& text, Style style) const {
    if (!fHasColor) return text;
    return "\x1B[" + std::to_string(static_cast<int>(style)) + "m" + text + "\x1B[0m";
  }
  std::string Failed(const std::string& text) const {
    return Styled({kFailed}, Style::kRed) + " " + text;
  }

  const bool fHasColor = HasColor();
  const bool fMaps;
  OutputFile fOutput{kStandardStreamName};
  /// As last written.
  std::optional<FrameHeader> fGeometry;
};

void TextReport::Write(const MessageReport& report, const FrameView& /*frame*/) {
  if (report.HasGrid() && !(fGeometry && SameGeometry(*fGeometry, *report.outline.header))) {
    WriteGeometry(report);
  }
  fOutput.WriteLine(Row(report));
  if (report.failure) fOutput.WriteLine(kIndent + Failed(ExplainFailure(*report.failure)));
  if (fMaps && report.HasGrid()) WriteMap(report);
}

void TextReport::WriteGeometry(const MessageReport& report) {
  const FrameHeader& header = *report.outline.header;
  fGeometry = header;
  const std::string line = CodecName(header.codecType) + ", " +
                           SizeText(header.imageWidth, header.imageHeight) + " pixels in " +
                           SizeText(report.outline.gridWidth, report.outline.gridHeight) +
                           " blocks of " + SizeText(header.blockWidth, header.blockHeight);
  fOutput.WriteLine(Styled(line, Style::kBold));
  const std::string headings = AlignRight("#", kNumberWidth) + " " + AlignLeft("type", kTypeWidth) +
                               AlignRight("bytes", kBytesWidth) +
                               AlignRight("changed", kPercentWidth) + "  records";
  fOutput.WriteLine(Styled(headings, Style::kDim));
}

std::string TextReport::Row(const MessageReport& report) const {
  const std::optional<FrameHeader>& header = report.outline.header;
  const bool isKey = header && header->IsKeyFrame();
  const std::string type = AlignLeft(isKey    ? "key"
                                     : header ? std::to_string(header->frameType)
                                              : "-",
                                     kTypeWidth);
  const std::string changed =
      report.HasGrid() ? Percent(report.changedBlocks, report.cells.size()) : "-";
  return AlignRight(std::to_string(report.Number()), kNumberWidth) + " " +
         (isKey ? Styled(type, Style::kBold) : type) +
         AlignRight(HumanBytes(report.bytes), kBytesWidth) + AlignRight(changed, kPercentWidth) +
         Records(report);
}

std::string TextReport::Records(const MessageReport& report) const {
  std::string text;
  for (const auto& [kind, tally] : report.tallies) {
    if (kind == RecordKind::kEmpty) continue;
    if (!text.empty()) text += ' ';
    text += Styled(TextOf(kind).letter + std::to_string(tally.count), StyleOf(kind));
  }
  if (report.outline.paletteSize) {
    text += std::string(text.empty() ? "" : ", ") + "palette " + report.palette;
  }
  if (report.outline.passes > 1) text += ", " + std::to_string(report.outline.passes) + " passes";
  if (report.outline.unread != 0) {
    text += ", " + Counted(report.outline.unread, "byte") + " not read";
  }
  return text.empty() ? text : "  " + text;
}

void TextReport::WriteMap(const MessageReport& report) {
  const std::optional<Failure>& failure = report.failure;
  for (int row = report.outline.gridHeight - 1; row >= 0; --row) {
    std::string line = kIndent;
    for (int column = 0; column < report.outline.gridWidth; ++column) {
      const RecordKind kind = report.cells[report.CellIndex({1, row, column})];
      const bool failed = failure && failure->block && failure->block->row == row &&
                          failure->block->column == column;
      line +=
          Styled({failed ? kFailed : TextOf(kind).letter}, failed ? Style::kRed : StyleOf(kind));
    }
    fOutput.WriteLine(line);
  }
}

void TextReport::WriteHeldBack(const std::string& sentence) {
  fOutput.WriteLine(kIndent + Failed(sentence));
}

void TextReport::Finish(const StreamSummary& summary, const std::string& problem) {
  fOutput.WriteLine("");
  if (summary.messages != summary.failed) {
    fOutput.WriteLine(Counted(summary.messages - summary.failed, "message") + " decoded (" +
                      Counted(summary.keyFrames, "key frame") + ")");
  }
  if (summary.failed != 0) {
    fOutput.WriteLine(Failed(Counted(summary.failed, "message") + " failed"));
  }
  if (!problem.empty()) fOutput.WriteLine(Failed(Printable(problem)));
  fOutput.WriteLine(summary.SizeText());
  WriteRecordTable(summary.tallies);
  fOutput.Commit();
}

void TextReport::WriteRecordTable(const RecordTallies& tallies) {
  RecordTally all;
  for (const auto& [kind, tally] : tallies) {
    all.count += tally.count;
    all.bytes += tally.bytes;
  }
  if (all.count == 0) return;
  const std::string headings = "\n  " + AlignLeft("records", kLabelWidth) +
                               AlignRight("count", kCountWidth) + AlignRight("", kPercentWidth) +
                               AlignRight("bytes", kBytesWidth);
  fOutput.WriteLine(Styled(headings, Style::kDim));
  for (const auto& [kind, tally] : tallies) {
    fOutput.WriteLine(Styled({TextOf(kind).letter}, StyleOf(kind)) + " " +
                      AlignLeft(TextOf(kind).label, kLabelWidth) +
                      AlignRight(std::to_string(tally.count), kCountWidth) +
                      AlignRight(Percent(tally.count, all.count), kPercentWidth) +
                      AlignRight(HumanBytes(tally.bytes), kBytesWidth) +
                      AlignRight(Percent(tally.bytes, all.bytes), kPercentWidth));
  }
}

}  // namespace

std::unique_ptr<ReportWriter> MakeTextReport(bool maps) {
  return std::make_unique<TextReport>(maps);
}

}  // namespace zlibvideo
