#include "tools/decode/formats/FrameRate.h"

#include <numeric>
#include <optional>

namespace zlibvideo {
namespace {

constexpr std::uint64_t kMillisecondsPerSecond = 1000;
constexpr std::size_t kMaxDigits = 7;
constexpr std::size_t kMaxDecimals = 3;

/// The number that `text` is, of up to `kMaxDigits` digits; nothing for any other text.
std::optional<std::uint32_t> Digits(const std::string& text) {
  if (text.empty() || text.size() > kMaxDigits) return std::nullopt;
  if (text.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  return static_cast<std::uint32_t>(std::stoul(text));
}

std::optional<std::uint32_t> PowerOfTen(std::size_t exponent) {
  if (exponent > kMaxDecimals) return std::nullopt;
  std::uint32_t power = 1;
  for (; exponent > 0; --exponent) power *= 10;
  return power;
}

}  // namespace

bool FrameRate::Parse(const std::string& text, FrameRate* rate) {
  const std::size_t separator = text.find_first_of("./");
  const std::string rest = separator == std::string::npos ? "" : text.substr(separator + 1);
  std::optional<std::uint32_t> numerator;
  std::optional<std::uint32_t> denominator = 1;
  if (separator == std::string::npos) {
    numerator = Digits(text);
  } else if (text[separator] == '/') {
    numerator = Digits(text.substr(0, separator));
    denominator = Digits(rest);
  } else {
    numerator = Digits(text.substr(0, separator) + rest);
    denominator = PowerOfTen(rest.size());
  }
  if (!numerator || !denominator || *numerator == 0 || *denominator == 0) return false;
  if (*numerator > std::uint64_t{kMax} * *denominator) return false;
  if (*denominator > std::uint64_t{kMaxSeconds} * *numerator) return false;
  const std::uint32_t divisor = std::gcd(*numerator, *denominator);
  *rate = {*numerator / divisor, *denominator / divisor};
  return true;
}

std::uint64_t FrameRate::StartOf(std::uint64_t index) const {
  return (index * kMillisecondsPerSecond * denominator + numerator / 2) / numerator;
}

}  // namespace zlibvideo
