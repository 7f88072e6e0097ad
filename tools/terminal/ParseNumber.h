#ifndef ZLIBVIDEO_TOOLS_TERMINAL_PARSENUMBER_H
#define ZLIBVIDEO_TOOLS_TERMINAL_PARSENUMBER_H

#include <charconv>
#include <string_view>
#include <system_error>

namespace zlibvideo {

/// Reads a whole number from `min`, at least 0, to `max`, in decimal digits. Returns false for any
/// other text. `number` then has no certain value.
template <typename Number>
[[nodiscard]] bool ParseNumber(std::string_view text, Number min, Number max, Number* number) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, *number);
  return error == std::errc() && rest == end && min <= *number && *number <= max;
}

/// Reads "WIDTHxHEIGHT" in the same way, with both sides from `min` to `max`.
[[nodiscard]] inline bool ParseSize(std::string_view text, int min, int max, int* width,
                                    int* height) {
  const std::size_t cross = text.find('x');
  return cross != std::string_view::npos && ParseNumber(text.substr(0, cross), min, max, width) &&
         ParseNumber(text.substr(cross + 1), min, max, height);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_PARSENUMBER_H
