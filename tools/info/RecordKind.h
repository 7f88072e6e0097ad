#ifndef ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H
#define ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H

#include "bitstream/MessageBody.h"

namespace zlibvideo {

/// How a record carries its block.
enum class RecordKind : unsigned char {
  kEmpty,
  kDirect,
  kIntermediate,
  kPrimed,
  kBanded,
  kPrimedBanded,
  // The same with colour-reduced pixels, in the same order.
  kReducedDirect,
  kReducedIntermediate,
  kReducedPrimed,
  kReducedBanded,
  kReducedPrimedBanded,
  /// A colour field that no conversion accepts.
  kUnconvertible,
  /// A record of a codec type whose payloads the decoder does not know.
  kSkipped,
};
/// How many kinds there are.
inline constexpr int kRecordKinds = 13;

struct KindText {
  /// In JSON: lower case, words joined by underscores.
  const char* name;
  /// For people.
  const char* label;
  /// In maps of the grid: upper case, or lower case for the colour-reduced form.
  char letter;
};

RecordKind KindOf(const BlockRecord& record, int codecType);
const KindText& TextOf(RecordKind kind);

/// Whether a record of this kind may change its block.
inline bool IsChange(RecordKind kind) {
  return kind != RecordKind::kEmpty && kind != RecordKind::kSkipped;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H
