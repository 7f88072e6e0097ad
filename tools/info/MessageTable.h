#ifndef ZLIBVIDEO_TOOLS_INFO_MESSAGETABLE_H
#define ZLIBVIDEO_TOOLS_INFO_MESSAGETABLE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/info/MessageReport.h"
#include "tools/info/RecordKind.h"
#include "tools/terminal/Terminal.h"

namespace zlibvideo {

/// How text about records of that form is shown.
Terminal::Style StyleOf(RecordKind::Form form);

/// Kinds that the table of messages counts together, under one heading.
struct KindColumn {
  const char* heading;
  /// The heading where lines have to be short.
  const char* briefHeading;
  /// Counted colour-reduced or not; all that are colour-reduced when there is none.
  std::optional<RecordKind::Form> form;
  /// Shown only once a message has such a record.
  bool rare = false;

  std::uint64_t CountIn(const MessageReport& report) const;
};

/// The table of a text report, a row for each message, made as wide as the terminal lets it be.
/// Rows are written while the stream is read, so that columns are chosen without knowing what is
/// to come: a kind of record that is rare gets one when it is first met.
class MessageTable {
 public:
  explicit MessageTable(const Terminal& terminal) : fTerminal(terminal) {}

  /// Begins a table of messages that all have the codec type and the grid of `first`.
  void Begin(const MessageReport& first);
  /// Makes room for all that `report` has; true when columns were added, so that the headings
  /// change. Called for every message but that of `Begin`.
  [[nodiscard]] bool AddColumnsFor(const MessageReport& report);

  /// Lines, without their end.
  std::string Headings() const;
  std::string Row(const MessageReport& report) const;
  /// The row of a message that has no grid; it may stand before any table.
  static std::string RowWithoutGrid(const MessageReport& report);

 private:
  void Fit();
  const char* HeadingOf(const KindColumn& column) const;
  std::size_t WidthOf(const KindColumn& column) const;
  std::size_t WidthWithoutBar() const;
  std::string FlagsAndPalette(const MessageReport& report) const;
  std::string Counts(const MessageReport& report) const;

  const Terminal fTerminal;
  int fCodecType = 0;
  /// Of the largest count that a message can have.
  std::size_t fCountDigits = 0;
  std::vector<const KindColumn*> fColumns;
  bool fBrief = false;
  /// Characters for the change bar; 0 leaves it out.
  std::size_t fBarWidth = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_MESSAGETABLE_H
