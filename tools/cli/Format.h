#ifndef ZLIBVIDEO_TOOLS_CLI_FORMAT_H
#define ZLIBVIDEO_TOOLS_CLI_FORMAT_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace zlibvideo {

/// A number of bytes for people: "812 B", "12.3 KiB", "4.0 MiB".
std::string HumanBytes(std::uint64_t bytes);
/// `part` of `whole` in percent, rounded to one decimal: "12.5 %". "0.0 %" of nothing.
std::string Percent(std::uint64_t part, std::uint64_t whole);

/// `text` with spaces before or after it to make it at least `width` bytes. ASCII only.
std::string AlignRight(const std::string& text, std::size_t width);
std::string AlignLeft(const std::string& text, std::size_t width);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_FORMAT_H
