#include "tools/info/MessageTable.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "bitstream/FrameHeader.h"
#include "tools/cli/Format.h"
#include "tools/info/ChangeBar.h"

namespace zlibvideo {
namespace {

using Style = Terminal::Style;

// Widths of columns; each but the first has one more for the blank before it.
constexpr std::size_t kIndexWidth = 5;
constexpr std::size_t kTypeWidth = 4;
constexpr std::size_t kFlagsWidth = 5;
constexpr std::size_t kPaletteWidth = 4;
constexpr std::size_t kBytesWidth = 9;
constexpr std::size_t kPercentWidth = 7;
constexpr std::size_t kBarGap = 2;
/// A bar shorter than its shorter heading is not worth its place.
constexpr std::string_view kBarHeading = "left to right";
constexpr std::string_view kBriefBarHeading = "where";

constexpr std::size_t kMostPasses = 2;

std::string Left(const std::string& text, std::size_t width) {
  return " " + AlignLeft(text, width);
}

std::string Right(const std::string& text, std::size_t width) {
  return " " + AlignRight(text, width);
}

std::string TypeName(const FrameHeader& header) {
  return header.IsKeyFrame() ? "key" : std::to_string(header.frameType);
}

std::string FlagsName(unsigned int flags) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  return {'0', 'x', kDigits[flags >> 4], kDigits[flags & 0xF]};
}

const char* PaletteName(PaletteOutcome outcome) {
  if (outcome == PaletteOutcome::kNone) return "-";
  return outcome == PaletteOutcome::kInstalled ? "new" : "kept";
}

}  // namespace

void MessageTable::Begin(const MessageReport& first) {
  fCodecType = first.outline.header->codecType;
  fCountDigits = std::to_string(first.cells.size() * kMostPasses).size();
  fColumns.clear();
  static_cast<void>(AddColumnsFor(first));
}

bool MessageTable::AddColumnsFor(const MessageReport& report) {
  std::vector<const KindColumn*> columns;
  for (const KindColumn& column : KindColumnsOf(fCodecType)) {
    const bool shown = std::find(fColumns.begin(), fColumns.end(), &column) != fColumns.end();
    if (shown || !column.rare || column.CountIn(report) != 0) columns.push_back(&column);
  }
  if (columns == fColumns) return false;
  fColumns = std::move(columns);
  Fit();
  return true;
}

/// Where lines would get too long, headings become brief, then the bar shorter, and then it goes.
void MessageTable::Fit() {
  constexpr std::size_t kFullBar = kChangeBarWidth;
  fBrief = false;
  fBrief = WidthWithoutBar() + kBarGap + kFullBar > fTerminal.width;
  const std::size_t others = WidthWithoutBar() + kBarGap;
  const std::size_t room = fTerminal.width > others ? fTerminal.width - others : 0;
  fBarWidth = room < kBriefBarHeading.size() ? 0 : std::min(room, kFullBar);
}

const char* MessageTable::HeadingOf(const KindColumn& column) const {
  return fBrief ? column.briefHeading : column.heading;
}

std::size_t MessageTable::WidthOf(const KindColumn& column) const {
  return std::max(std::string_view(HeadingOf(column)).size(), fCountDigits);
}

std::size_t MessageTable::WidthWithoutBar() const {
  std::size_t width = kIndexWidth + 1 + kTypeWidth + 1 + kBytesWidth + 1 + kPercentWidth;
  if (fCodecType == kCodecTypeVersion2) width += 1 + kFlagsWidth + 1 + kPaletteWidth;
  for (const KindColumn* column : fColumns) width += 1 + WidthOf(*column);
  return width;
}

std::string MessageTable::Headings() const {
  std::string line = AlignRight("#", kIndexWidth) + Left("type", kTypeWidth);
  if (fCodecType == kCodecTypeVersion2) {
    line += Left("flags", kFlagsWidth) + Right("pal", kPaletteWidth);
  }
  line += Right("bytes", kBytesWidth);
  for (const KindColumn* column : fColumns) line += Right(HeadingOf(*column), WidthOf(*column));
  line += Right("changed", kPercentWidth);
  if (fBarWidth == 0) return line;
  line += std::string(kBarGap, ' ');
  return line.append(fBarWidth < kBarHeading.size() ? kBriefBarHeading : kBarHeading);
}

std::string MessageTable::Row(const MessageReport& report) const {
  const FrameHeader& header = *report.outline.header;
  const std::string type = Left(TypeName(header), kTypeWidth);
  std::string line = AlignRight(std::to_string(report.index), kIndexWidth);
  line += header.IsKeyFrame() ? fTerminal.Styled(type, Style::kBold) : type;
  line += FlagsAndPalette(report) + Right(HumanBytes(report.bytes), kBytesWidth) + Counts(report) +
          Right(Percent(report.changedBlocks, report.cells.size()), kPercentWidth);
  if (fBarWidth == 0) return line;
  return line + std::string(kBarGap, ' ') +
         ChangeBar(report, static_cast<int>(fBarWidth), fTerminal);
}

std::string MessageTable::RowWithoutGrid(const MessageReport& report) {
  return AlignRight(std::to_string(report.index), kIndexWidth) + " " + HumanBytes(report.bytes);
}

std::string MessageTable::FlagsAndPalette(const MessageReport& report) const {
  if (fCodecType != kCodecTypeVersion2) return "";
  return Left(FlagsName(report.outline.flags), kFlagsWidth) +
         Right(PaletteName(report.palette), kPaletteWidth);
}

std::string MessageTable::Counts(const MessageReport& report) const {
  std::string line;
  for (const KindColumn* column : fColumns) {
    const std::uint64_t count = column->CountIn(report);
    const std::string text = Right(count == 0 ? "-" : std::to_string(count), WidthOf(*column));
    line += fTerminal.Styled(text, count == 0 ? Style::kDim : StyleOf(column->kinds.front()));
  }
  return line;
}

}  // namespace zlibvideo
