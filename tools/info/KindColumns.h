#ifndef ZLIBVIDEO_TOOLS_INFO_KINDCOLUMNS_H
#define ZLIBVIDEO_TOOLS_INFO_KINDCOLUMNS_H

#include <cstdint>
#include <vector>

#include "tools/cli/Terminal.h"
#include "tools/info/MessageReport.h"
#include "tools/info/RecordKind.h"

namespace zlibvideo {

/// Kinds that the table of messages counts together, under one heading.
struct KindColumn {
  const char* heading;
  /// The heading where lines have to be short.
  const char* briefHeading;
  std::vector<RecordKind> kinds;
  /// Shown only once a message has such a record.
  bool rare = false;

  std::uint64_t CountIn(const MessageReport& report) const;
};

/// For the kinds that a message of this codec type can have.
const std::vector<KindColumn>& KindColumnsOf(int codecType);

/// How text about records of that kind is shown.
Terminal::Style StyleOf(RecordKind kind);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_KINDCOLUMNS_H
