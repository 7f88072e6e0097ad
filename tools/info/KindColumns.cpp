#include "tools/info/KindColumns.h"

#include "bitstream/FrameHeader.h"

namespace zlibvideo {

std::uint64_t KindColumn::CountIn(const MessageReport& report) const {
  std::uint64_t count = 0;
  for (const RecordKind kind : kinds) count += report.TallyOf(kind).count;
  return count;
}

const std::vector<KindColumn>& KindColumnsOf(int codecType) {
  using enum RecordKind;
  static const std::vector<KindColumn> kVersion1 = {{"empty", "empty", {kEmpty}},
                                                    {"direct", "direct", {kDirect}}};
  static const std::vector<KindColumn> kVersion2 = {
      {"empty", "empty", {kEmpty}},
      {"direct", "dir", {kDirect, kReducedDirect}},
      {"primed", "prim", {kPrimed, kReducedPrimed}},
      {"banded", "band", {kBanded, kReducedBanded}},
      {"p+band", "p+b", {kPrimedBanded, kReducedPrimedBanded}},
      {"interm", "int", {kIntermediate, kReducedIntermediate}, true},
      {"other", "oth", {kUnconvertible}, true},
      {"reduced",
       "red",
       {kReducedDirect, kReducedPrimed, kReducedBanded, kReducedPrimedBanded, kReducedIntermediate},
       true},
  };
  static const std::vector<KindColumn> kOther = {{"empty", "empty", {kEmpty}},
                                                 {"skipped", "skipped", {kSkipped}}};
  if (codecType == kCodecTypeVersion1) return kVersion1;
  return codecType == kCodecTypeVersion2 ? kVersion2 : kOther;
}

Terminal::Style StyleOf(RecordKind kind) {
  using Style = Terminal::Style;
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

}  // namespace zlibvideo
