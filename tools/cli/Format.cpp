#include "tools/cli/Format.h"

#include <array>
#include <cstdio>

namespace zlibvideo {
namespace {

std::string OneDecimal(double value, const char* unit) {
  std::array<char, 48> text;
  std::snprintf(text.data(), text.size(), "%.1f %s", value, unit);
  return text.data();
}

std::string Padding(const std::string& text, std::size_t width) {
  return std::string(width > text.size() ? width - text.size() : 0, ' ');
}

}  // namespace

std::string HumanBytes(std::uint64_t bytes) {
  constexpr double kStep = 1024;
  // Below this a value prints as less than 1024.0 of its unit.
  constexpr double kNextUnit = 1023.95;
  if (bytes < 1024) return std::to_string(bytes) + " B";
  double value = static_cast<double>(bytes) / kStep;
  for (const char* unit : {"KiB", "MiB", "GiB"}) {
    if (value < kNextUnit) return OneDecimal(value, unit);
    value /= kStep;
  }
  return OneDecimal(value, "TiB");
}

std::string Percent(std::uint64_t part, std::uint64_t whole) {
  constexpr double kHundred = 100;
  if (whole == 0) return OneDecimal(0, "%");
  return OneDecimal(static_cast<double>(part) * kHundred / static_cast<double>(whole), "%");
}

std::string AlignRight(const std::string& text, std::size_t width) {
  return Padding(text, width) + text;
}

std::string AlignLeft(const std::string& text, std::size_t width) {
  return text + Padding(text, width);
}

}  // namespace zlibvideo
