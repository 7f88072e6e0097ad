#include "tools/info/RecordKind.h"

#include <cstddef>

#include "bitstream/FrameHeader.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {
namespace {

/// In the order of `RecordKind`.
constexpr KindText kTexts[kRecordKinds] = {
    {"empty", "empty", '.'},
    {"direct", "direct", 'D'},
    {"intermediate", "intermediate", 'I'},
    {"primed", "primed", 'P'},
    {"banded", "banded", 'B'},
    {"primed_banded", "primed, banded", 'X'},
    {"reduced_direct", "reduced, direct", 'd'},
    {"reduced_intermediate", "reduced, intermediate", 'i'},
    {"reduced_primed", "reduced, primed", 'p'},
    {"reduced_banded", "reduced, banded", 'b'},
    {"reduced_primed_banded", "reduced, primed, banded", 'x'},
    {"unconvertible", "unconvertible colours", '?'},
    {"skipped", "skipped", '-'},
};

RecordKind KindWithPixels(unsigned int format) {
  if (IsPrimed(format)) return HasBand(format) ? RecordKind::kPrimedBanded : RecordKind::kPrimed;
  if (HasBand(format)) return RecordKind::kBanded;
  return IsDirect(format) ? RecordKind::kDirect : RecordKind::kIntermediate;
}

}  // namespace

RecordKind KindOf(const BlockRecord& record, int codecType) {
  if (record.IsEmpty()) return RecordKind::kEmpty;
  if (codecType != kCodecTypeVersion1 && codecType != kCodecTypeVersion2) {
    return RecordKind::kSkipped;
  }
  const unsigned int format = record.header.format;
  const RecordKind kind = KindWithPixels(format);
  if (!HasColorField(format)) return kind;
  if ((format & kFormatColorMask) != kFormatColorReduced) return RecordKind::kUnconvertible;
  constexpr int kToReduced =
      static_cast<int>(RecordKind::kReducedDirect) - static_cast<int>(RecordKind::kDirect);
  return static_cast<RecordKind>(static_cast<int>(kind) + kToReduced);
}

const KindText& TextOf(RecordKind kind) {
  return kTexts[static_cast<std::size_t>(kind)];
}

}  // namespace zlibvideo
