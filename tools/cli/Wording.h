#ifndef ZLIBVIDEO_TOOLS_CLI_WORDING_H
#define ZLIBVIDEO_TOOLS_CLI_WORDING_H

#include <cstdint>
#include <string>

namespace zlibvideo {

/// "1 message", "2 messages".
std::string Counted(std::uint64_t count, const std::string& noun);
/// "1280x720".
std::string SizeText(std::int64_t width, std::int64_t height);
/// `text` as one line that a terminal shows and does not obey: control characters, which may come
/// from a file name, are replaced.
std::string Printable(std::string text);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_WORDING_H
