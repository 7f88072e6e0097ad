#ifndef ZLIBVIDEO_TOOLS_CLI_WORDING_H
#define ZLIBVIDEO_TOOLS_CLI_WORDING_H

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace zlibvideo {

/// "1 message", "2 messages".
std::string Counted(std::uint64_t count, const std::string& noun);
/// "1280x720".
std::string SizeText(std::int64_t width, std::int64_t height);
/// Reads a whole number from `min`, at least 0, to `max`, in decimal digits. False, with `number`
/// in no certain state, for anything else.
template <typename Number>
[[nodiscard]] bool ParseNumber(std::string_view text, Number min, Number max, Number* number) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, *number);
  return error == std::errc() && rest == end && min <= *number && *number <= max;
}
/// Reads what `SizeText` writes, with both sides from `min` to `max`, in the same way.
[[nodiscard]] bool ParseSize(std::string_view text, int min, int max, int* width, int* height);
/// A number of bytes for people: "812 B", "12.3 KiB", "4.0 MiB".
std::string HumanBytes(std::uint64_t bytes);
/// `part` of `whole` in percent, rounded to one decimal: "12.5 %". "0.0 %" of nothing.
std::string Percent(std::uint64_t part, std::uint64_t whole);
/// `text` as one line that a terminal shows and does not obey: control characters, which may come
/// from a file name, are replaced.
std::string Printable(std::string text);
/// `text` with spaces before or after it to make it at least `width` bytes. ASCII only.
std::string AlignRight(const std::string& text, std::size_t width);
std::string AlignLeft(const std::string& text, std::size_t width);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_WORDING_H
