#ifndef ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H
#define ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H

#include <array>
#include <cstddef>

#include "bitstream/BlockRecord.h"

namespace zlibvideo {

/// How a record carries its block, as people who look at a stream tell records apart.
enum class RecordKind : unsigned char {
  kEmpty,
  kDirect,
  kIntermediate,
  kPrimed,
  kBanded,
  kPrimedBanded,
  kReducedDirect,
  kReducedIntermediate,
  kReducedPrimed,
  kReducedBanded,
  kReducedPrimedBanded,
  /// A colour field that no conversion accepts.
  kUnconvertible,
  /// A record of a codec type without payloads that this decoder knows.
  kSkipped,
};
inline constexpr std::size_t kRecordKindCount = 13;

struct RecordKindWords {
  /// As in JSON: lower case, words joined by underscores.
  const char* name;
  /// For people.
  const char* label;
  /// In maps of the grid: upper case, or lower case for the colour-reduced form of the same.
  char letter;
};

inline constexpr std::array<RecordKindWords, kRecordKindCount> kRecordKindWords = {{
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
}};

constexpr const RecordKindWords& WordsOf(RecordKind kind) {
  return kRecordKindWords[static_cast<std::size_t>(kind)];
}

RecordKind KindOf(const BlockRecord& record, int codecType);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H
