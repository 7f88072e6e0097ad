#include "tools/cli/Wording.h"

namespace zlibvideo {
namespace {

/// The control characters U+0080 to U+009F are this byte and a tail in UTF-8.
constexpr char kC1Lead = '\xC2';

bool IsC1Tail(char c) {
  const auto code = static_cast<unsigned char>(c);
  return 0x80 <= code && code <= 0x9F;
}

}  // namespace

std::string Counted(std::uint64_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string SizeText(std::int64_t width, std::int64_t height) {
  return std::to_string(width) + "x" + std::to_string(height);
}

std::string Printable(std::string text) {
  constexpr unsigned char kDelete = 0x7F;
  for (char& c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < ' ' || code == kDelete) c = '?';
  }
  for (std::size_t i = 0; (i = text.find(kC1Lead, i)) != std::string::npos; ++i) {
    if (IsC1Tail(text[i + 1])) text.replace(i, 2, "?");
  }
  return text;
}

}  // namespace zlibvideo
