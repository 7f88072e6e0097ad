#ifndef ZLIBVIDEO_TOOLS_TERMINAL_WORDING_H
#define ZLIBVIDEO_TOOLS_TERMINAL_WORDING_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace zlibvideo {

/// "1 message", "2 messages".
std::string Counted(std::uint64_t count, const std::string& noun);
/// "1280x720".
std::string SizeText(std::int64_t width, std::int64_t height);
/// A number of bytes for people: "812 B", "12.3 kB", "4.0 MB".
std::string HumanBytes(std::uint64_t bytes);
/// `part` of `whole` in percent, with one decimal: "12.5 %". "0.0 %" if `whole` is 0.
std::string Percent(std::uint64_t part, std::uint64_t whole);
/// `text` with "?" for control characters. File names may contain these, and a terminal obeys them.
std::string Printable(std::string text);
/// `text`, in ASCII, with spaces before or after it, of at least `width` characters.
std::string AlignRight(const std::string& text, std::size_t width);
std::string AlignLeft(const std::string& text, std::size_t width);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_WORDING_H
