#include "tools/terminal/Wording.h"

#include <array>
#include <cstdio>

namespace zlibvideo {
namespace {

/// In UTF-8, the control characters U+0080 to U+009F are this byte and a tail.
constexpr char kC1Lead = '\xC2';

bool IsC1Tail(char c) {
  const auto code = static_cast<unsigned char>(c);
  return 0x80 <= code && code <= 0x9F;
}

std::string OneDecimal(double value, const char* unit) {
  std::array<char, 48> text;
  std::snprintf(text.data(), text.size(), "%.1f %s", value, unit);
  return text.data();
}

std::string Padding(const std::string& text, std::size_t width) {
  return std::string(width > text.size() ? width - text.size() : 0, ' ');
}

}  // namespace

std::string Counted(std::uint64_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string SizeText(std::int64_t width, std::int64_t height) {
  return std::to_string(width) + "x" + std::to_string(height);
}

std::string HumanBytes(std::uint64_t bytes) {
  constexpr double kStep = 1000;
  // Lower values print as less than 1000.0 of their unit.
  constexpr double kNextUnit = 999.95;
  if (bytes < 1000) return std::to_string(bytes) + " B";
  double value = static_cast<double>(bytes) / kStep;
  for (const char* unit : {"kB", "MB", "GB"}) {
    if (value < kNextUnit) return OneDecimal(value, unit);
    value /= kStep;
  }
  return OneDecimal(value, "TB");
}

std::string Percent(std::uint64_t part, std::uint64_t whole) {
  constexpr double kHundred = 100;
  if (whole == 0) return OneDecimal(0, "%");
  return OneDecimal(static_cast<double>(part) * kHundred / static_cast<double>(whole), "%");
}

std::string Printable(std::string text) {
  constexpr unsigned char kDelete = 0x7F;
  for (char& c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < ' ' || code == kDelete) c = '?';
  }
  for (std::size_t i = 0; (i = text.find(kC1Lead, i)) != std::string::npos; ++i) {
    if (!IsC1Tail(text[i + 1])) continue;
    text[i] = '?';
    text.erase(i + 1, 1);
  }
  return text;
}

std::string AlignRight(const std::string& text, std::size_t width) {
  return Padding(text, width) + text;
}

std::string AlignLeft(const std::string& text, std::size_t width) {
  return text + Padding(text, width);
}

}  // namespace zlibvideo
