#include "tools/info/Base64.h"

#include <algorithm>
#include <cstdint>

namespace zlibvideo {
namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kGroupBytes = 3;

}  // namespace

std::string EncodeBase64(const std::vector<unsigned char>& bytes) {
  std::string text;
  text.reserve((bytes.size() + kGroupBytes - 1) / kGroupBytes * 4);
  for (std::size_t start = 0; start < bytes.size(); start += kGroupBytes) {
    const std::size_t count = std::min(kGroupBytes, bytes.size() - start);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < kGroupBytes; ++i) {
      group = group << 8 | (i < count ? bytes[start + i] : 0U);
    }
    for (std::size_t digit = 0; digit < 4; ++digit) {
      text += digit > count ? '=' : kDigits[group >> (18 - 6 * digit) & 0x3F];
    }
  }
  return text;
}

}  // namespace zlibvideo
