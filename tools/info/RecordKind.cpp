#include "tools/info/RecordKind.h"

#include "bitstream/FrameHeader.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {
namespace {

constexpr unsigned int kPrimedAndBanded = kFormatPrimed | kFormatDiffRows;

RecordKind PlainKind(unsigned int format) {
  if ((format & kPrimedAndBanded) == kPrimedAndBanded) return RecordKind::kPrimedBanded;
  if ((format & kFormatPrimed) != 0) return RecordKind::kPrimed;
  if ((format & kFormatDiffRows) != 0) return RecordKind::kBanded;
  if ((format & kFormatIntermediate) != 0) return RecordKind::kIntermediate;
  return RecordKind::kDirect;
}

RecordKind ReducedKind(RecordKind plain) {
  switch (plain) {
    case RecordKind::kPrimedBanded:
      return RecordKind::kReducedPrimedBanded;
    case RecordKind::kPrimed:
      return RecordKind::kReducedPrimed;
    case RecordKind::kBanded:
      return RecordKind::kReducedBanded;
    case RecordKind::kIntermediate:
      return RecordKind::kReducedIntermediate;
    default:
      return RecordKind::kReducedDirect;
  }
}

}  // namespace

RecordKind KindOf(const BlockRecord& record, int codecType) {
  if (record.IsEmpty()) return RecordKind::kEmpty;
  if (codecType != kCodecTypeVersion1 && codecType != kCodecTypeVersion2) {
    return RecordKind::kSkipped;
  }
  const RecordKind plain = PlainKind(record.header.format);
  if (!HasColorField(record.header.format)) return plain;
  return (record.header.format & kFormatColorMask) == kFormatColorReduced
             ? ReducedKind(plain)
             : RecordKind::kUnconvertible;
}

}  // namespace zlibvideo
