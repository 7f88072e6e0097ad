#include "tools/decode/HashLine.h"

#include <zlib.h>

#include <cstdio>
#include <regex>

namespace zlibvideo {

std::string HashLine(std::uint64_t index, bool decoded, const FrameView& frame) {
  // An empty picture has no bytes, and a null pointer asks zlib for its initial value.
  const uLong crc = frame.pixels == nullptr ? 0 : crc32_z(0, frame.pixels, frame.ByteCount());
  char digits[sizeof("01234567")];
  std::snprintf(digits, sizeof(digits), "%08lx", crc & 0xFFFFFFFFUL);
  return std::to_string(index) + (decoded ? " 1 " : " 0 ") + std::to_string(frame.width) + "x" +
         std::to_string(frame.height) + " " + digits;
}

bool IsHashLine(const std::string& text) {
  static const std::regex kForm("[0-9]+ [01] [0-9]+x[0-9]+ [0-9a-f]{8}");
  return std::regex_match(text, kForm);
}

}  // namespace zlibvideo
