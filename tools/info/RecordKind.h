#ifndef ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H
#define ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H

#include <array>
#include <cstddef>
#include <string>

#include "bitstream/MessageBody.h"

namespace zlibvideo {

/// How a record carries its block, as people who look at a stream tell records apart.
struct RecordKind {
  enum class Form : unsigned char {
    kEmpty,
    kDirect,
    kIntermediate,
    kPrimed,
    kBanded,
    kPrimedBanded,
    /// A colour field that no conversion accepts.
    kUnconvertible,
    /// A record of a codec type without payloads that this decoder knows.
    kSkipped,
  };

  Form form = Form::kEmpty;
  /// Whether the pixels are colour-reduced.
  bool reduced = false;

  static RecordKind Of(const BlockRecord& record, int codecType);

  bool operator==(const RecordKind&) const = default;
  /// Whether the record may change its block.
  bool IsChange() const { return form != Form::kEmpty && form != Form::kSkipped; }

  /// As in JSON: lower case, words joined by underscores.
  std::string Name() const;
  /// For people.
  std::string Label() const;
  /// In maps of the grid: upper case, or lower case for the colour-reduced form of the same.
  char Letter() const;
  /// Which one of `kRecordKinds` it is.
  std::size_t Index() const;
};

/// The name of a form in JSON, colour-reduced or not.
const char* NameOf(RecordKind::Form form);

/// All kinds, in the order of reports.
inline constexpr std::array<RecordKind, 13> kRecordKinds = {{
    {RecordKind::Form::kEmpty},
    {RecordKind::Form::kDirect},
    {RecordKind::Form::kIntermediate},
    {RecordKind::Form::kPrimed},
    {RecordKind::Form::kBanded},
    {RecordKind::Form::kPrimedBanded},
    {RecordKind::Form::kDirect, true},
    {RecordKind::Form::kIntermediate, true},
    {RecordKind::Form::kPrimed, true},
    {RecordKind::Form::kBanded, true},
    {RecordKind::Form::kPrimedBanded, true},
    {RecordKind::Form::kUnconvertible},
    {RecordKind::Form::kSkipped},
}};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_RECORDKIND_H
