#ifndef ZLIBVIDEO_TOOLS_INFO_MESSAGEJSON_H
#define ZLIBVIDEO_TOOLS_INFO_MESSAGEJSON_H

#include <nlohmann/json.hpp>

#include "tools/info/MessageReport.h"

namespace zlibvideo {

/// A message's report as one object. All messages have the same keys, those that `zlibvideo info
/// --help` explains; a value that does not apply is null.
nlohmann::ordered_json MessageJson(const MessageReport& report);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_MESSAGEJSON_H
