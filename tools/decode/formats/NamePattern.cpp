#include "tools/decode/formats/NamePattern.h"

#include <cctype>

namespace zlibvideo {
namespace {

constexpr std::size_t kMaxWidthDigits = 2;

bool IsDigit(char c) {
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

}  // namespace

bool NamePattern::Parse(const std::string& text, NamePattern* pattern, std::string* problem) {
  NamePattern result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string& part = result.fHasNumber ? result.fAfter : result.fBefore;
    if (text[i] != '%') {
      part += text[i];
      continue;
    }
    if (text.compare(i, 2, "%%") == 0) {
      part += text[i++];
      continue;
    }
    if (result.fHasNumber) {
      *problem = "has more than one number (%d) in it";
      return false;
    }
    const std::size_t fillEnd = i + 1 + (text.compare(i + 1, 1, "0") == 0 ? 1 : 0);
    std::size_t end = fillEnd;
    while (end < text.size() && IsDigit(text[end]) && end - fillEnd < kMaxWidthDigits) ++end;
    if (end >= text.size() || text[end] != 'd') {
      *problem = "has a '%' that is not part of %d, %4d, %04d (the picture's number) or %%";
      return false;
    }
    result.fHasNumber = true;
    result.fFill = fillEnd > i + 1 ? '0' : ' ';
    if (end > fillEnd) result.fWidth = std::stoul(text.substr(fillEnd, end - fillEnd));
    i = end;
  }
  *pattern = result;
  return true;
}

std::string NamePattern::Name(std::uint64_t number) const {
  if (!fHasNumber) return fBefore;
  const std::string digits = std::to_string(number);
  const std::size_t fill = digits.size() < fWidth ? fWidth - digits.size() : 0;
  return fBefore + std::string(fill, fFill) + digits + fAfter;
}

}  // namespace zlibvideo
