#include "tools/info/MessageTable.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "bitstream/FrameHeader.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

using Style = Terminal::Style;

// Widths of columns; each but the first has one more for the blank before it.
constexpr std::size_t kNumberWidth = 5;
constexpr std::size_t kTypeWidth = 4;
constexpr std::size_t kFlagsWidth = 5;
constexpr std::size_t kPaletteWidth = 4;
constexpr std::size_t kBytesWidth = 9;
constexpr std::size_t kPercentWidth = 7;
constexpr std::size_t kBarGap = 2;
/// A bar shorter than its shorter heading is not worth its place.
constexpr std::string_view kBarHeading = "left to right";
constexpr std::string_view kBriefBarHeading = "where";

/// Characters that a change bar takes where there is room.
constexpr int kChangeBarWidth = 16;

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

/// For the kinds that a message of this codec type can have.
const std::vector<KindColumn>& KindColumnsOf(int codecType) {
  using enum RecordKind::Form;
  static const std::vector<KindColumn> kVersion1 = {{"empty", "empty", kEmpty},
                                                    {"direct", "direct", kDirect}};
  static const std::vector<KindColumn> kVersion2 = {
      {"empty", "empty", kEmpty},
      {"direct", "dir", kDirect},
      {"primed", "prim", kPrimed},
      {"banded", "band", kBanded},
      {"p+band", "p+b", kPrimedBanded},
      {"interm", "int", kIntermediate, true},
      {"other", "oth", kUnconvertible, true},
      {"reduced", "red", std::nullopt, true},
  };
  static const std::vector<KindColumn> kOther = {{"empty", "empty", kEmpty},
                                                 {"skipped", "skipped", kSkipped}};
  if (codecType == kCodecTypeVersion1) return kVersion1;
  return codecType == kCodecTypeVersion2 ? kVersion2 : kOther;
}

/// The first for no change at all, the last for every block.
constexpr std::array<const char*, 9> kUnicodeLevels = {"·", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::array<const char*, 9> kAsciiLevels = {".", ":", "-", "=", "+", "*", "%", "@", "#"};

int CountChanged(const MessageReport& report, int firstColumn, int endColumn) {
  int changed = 0;
  for (int row = 0; row < report.outline.gridHeight; ++row) {
    for (int column = firstColumn; column < endColumn; ++column) {
      if (report.CellAt(row, column).IsChange()) ++changed;
    }
  }
  return changed;
}

/// Where a message changed the picture, from its left edge to its right: each character stands for
/// one or more columns of blocks, and the more of their blocks changed, the fuller it is. At most
/// `mostWidth` characters, which must be positive.
std::string ChangeBar(const MessageReport& report, int mostWidth, const Terminal& terminal) {
  const auto& levels = terminal.unicode ? kUnicodeLevels : kAsciiLevels;
  const int highest = static_cast<int>(levels.size()) - 1;
  const int columns = report.outline.gridWidth;
  const int width = std::min(columns, mostWidth);
  std::string bar;
  for (int cell = 0; cell < width; ++cell) {
    const int first = cell * columns / width;
    const int end = (cell + 1) * columns / width;
    const int blocks = (end - first) * report.outline.gridHeight;
    // Rounded up, so that a single block shows, and full only when every block changed.
    const int changed = CountChanged(report, first, end);
    const int level = changed == blocks ? highest : (changed * (highest - 1) + blocks - 1) / blocks;
    bar += levels[static_cast<std::size_t>(level)];
  }
  return bar;
}

}  // namespace

Terminal::Style StyleOf(RecordKind::Form form) {
  using enum RecordKind::Form;
  switch (form) {
    case kEmpty:
    case kSkipped:
      return Style::kDim;
    case kDirect:
      return Style::kBlue;
    case kPrimed:
      return Style::kMagenta;
    case kBanded:
      return Style::kCyan;
    case kPrimedBanded:
      return Style::kGreen;
    default:
      return Style::kYellow;
  }
}

std::uint64_t KindColumn::CountIn(const MessageReport& report) const {
  std::uint64_t count = 0;
  for (const RecordKind& kind : kRecordKinds) {
    if (form ? kind.form == *form : kind.reduced) count += report.tallies[kind.Index()].count;
  }
  return count;
}

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
  std::size_t width = kNumberWidth + 1 + kTypeWidth + 1 + kBytesWidth + 1 + kPercentWidth;
  if (fCodecType == kCodecTypeVersion2) width += 1 + kFlagsWidth + 1 + kPaletteWidth;
  for (const KindColumn* column : fColumns) width += 1 + WidthOf(*column);
  return width;
}

std::string MessageTable::Headings() const {
  std::string line = AlignRight("#", kNumberWidth) + Left("type", kTypeWidth);
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
  std::string line = AlignRight(std::to_string(report.Number()), kNumberWidth);
  line += header.IsKeyFrame() ? fTerminal.Styled(type, Style::kBold) : type;
  line += FlagsAndPalette(report) + Right(HumanBytes(report.bytes), kBytesWidth) + Counts(report) +
          Right(Percent(report.changedBlocks, report.cells.size()), kPercentWidth);
  if (fBarWidth == 0) return line;
  return line + std::string(kBarGap, ' ') +
         ChangeBar(report, static_cast<int>(fBarWidth), fTerminal);
}

std::string MessageTable::RowWithoutGrid(const MessageReport& report) {
  return AlignRight(std::to_string(report.Number()), kNumberWidth) + " " + HumanBytes(report.bytes);
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
    line += fTerminal.Styled(
        text, count == 0 ? Style::kDim : StyleOf(column->form.value_or(RecordKind::Form::kDirect)));
  }
  return line;
}

}  // namespace zlibvideo
