#include "tools/common/Wording.h"

namespace zlibvideo {

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
  return text;
}

}  // namespace zlibvideo
