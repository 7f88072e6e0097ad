#include "tools/decode/formats/FrameRate.h"

#include "tools/terminal/ParseNumber.h"

namespace zlibvideo {
namespace {

constexpr std::uint64_t kMillisecondsPerSecond = 1000;
constexpr std::uint32_t kMaxNumber = 9'999'999;
constexpr std::size_t kMaxDecimals = 3;

}  // namespace

bool FrameRate::Parse(const std::string& text, FrameRate* rate) {
  FrameRate result;
  std::string digits = text;
  const std::size_t separator = text.find_first_of("./");
  if (separator != std::string::npos && text[separator] == '/') {
    const std::string rest = text.substr(separator + 1);
    if (!ParseNumber(rest, 1U, kMaxNumber, &result.denominator)) return false;
    digits.resize(separator);
  } else if (separator != std::string::npos) {
    digits.erase(separator, 1);
    if (digits.size() - separator > kMaxDecimals) return false;
    for (std::size_t i = separator; i < digits.size(); ++i) result.denominator *= 10;
  }
  if (!ParseNumber(digits, 1U, kMaxNumber, &result.numerator)) return false;
  if (result.numerator > std::uint64_t{kMax} * result.denominator) return false;
  if (result.denominator > std::uint64_t{kMaxSeconds} * result.numerator) return false;
  *rate = result;
  return true;
}

std::uint64_t FrameRate::StartOf(std::uint64_t index) const {
  return (index * kMillisecondsPerSecond * denominator + numerator / 2) / numerator;
}

}  // namespace zlibvideo
