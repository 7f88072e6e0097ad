#include "tools/info/RecordKind.h"

#include <algorithm>
#include <cctype>

#include "bitstream/FrameHeader.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {
namespace {

using Form = RecordKind::Form;

struct FormWords {
  const char* name;
  const char* label;
  char letter;
};

/// Of each form, in their order.
constexpr FormWords kFormWords[] = {
    {"empty", "empty", '.'},
    {"direct", "direct", 'D'},
    {"intermediate", "intermediate", 'I'},
    {"primed", "primed", 'P'},
    {"banded", "banded", 'B'},
    {"primed_banded", "primed, banded", 'X'},
    {"unconvertible", "unconvertible colours", '?'},
    {"skipped", "skipped", '-'},
};

const FormWords& WordsOf(Form form) {
  return kFormWords[static_cast<std::size_t>(form)];
}

Form FormOf(unsigned int format) {
  if (IsPrimed(format)) return HasBand(format) ? Form::kPrimedBanded : Form::kPrimed;
  if (HasBand(format)) return Form::kBanded;
  return (format & kFormatIntermediate) != 0 ? Form::kIntermediate : Form::kDirect;
}

}  // namespace

RecordKind RecordKind::Of(const BlockRecord& record, int codecType) {
  const unsigned int format = record.header.format;
  if (record.IsEmpty()) return {Form::kEmpty};
  if (codecType != kCodecTypeVersion1 && codecType != kCodecTypeVersion2) return {Form::kSkipped};
  if (!HasColorField(format)) return {FormOf(format)};
  if ((format & kFormatColorMask) != kFormatColorReduced) return {Form::kUnconvertible};
  return {FormOf(format), true};
}

std::string RecordKind::Name() const {
  return (reduced ? "reduced_" : "") + std::string(WordsOf(form).name);
}

std::string RecordKind::Label() const {
  return (reduced ? "reduced, " : "") + std::string(WordsOf(form).label);
}

char RecordKind::Letter() const {
  const char letter = WordsOf(form).letter;
  return reduced ? static_cast<char>(std::tolower(letter)) : letter;
}

std::size_t RecordKind::Index() const {
  const auto* const found = std::find(kRecordKinds.begin(), kRecordKinds.end(), *this);
  return static_cast<std::size_t>(found - kRecordKinds.begin());
}

const char* NameOf(RecordKind::Form form) {
  return WordsOf(form).name;
}

}  // namespace zlibvideo
