#include "tools/decode/formats/NamePattern.h"

#include <regex>

namespace zlibvideo {
namespace {

std::string Unescape(const std::string& text) {
  static const std::regex kPercentSign("%%");
  return std::regex_replace(text, kPercentSign, "%");
}

}  // namespace

bool NamePattern::Parse(const std::string& text, NamePattern* pattern) {
  static const std::regex kForm("((?:[^%]|%%)*)(?:%(0?)([0-9]{0,2})d((?:[^%]|%%)*))?");
  std::smatch parts;
  if (!std::regex_match(text, parts, kForm)) return false;
  pattern->fBefore = Unescape(parts.str(1));
  pattern->fHasNumber = parts[4].matched;
  pattern->fFill = parts.length(2) > 0 ? '0' : ' ';
  pattern->fWidth = parts.length(3) > 0 ? std::stoul(parts.str(3)) : 0;
  pattern->fAfter = Unescape(parts.str(4));
  return true;
}

std::string NamePattern::Name(std::uint64_t number) const {
  if (!fHasNumber) return fBefore;
  const std::string digits = std::to_string(number);
  const std::size_t fill = digits.size() < fWidth ? fWidth - digits.size() : 0;
  return fBefore + std::string(fill, fFill) + digits + fAfter;
}

}  // namespace zlibvideo
