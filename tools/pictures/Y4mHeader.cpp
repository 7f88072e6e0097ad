#include "tools/pictures/Y4mHeader.h"

#include "bitstream/FrameHeader.h"
#include "tools/terminal/ParseNumber.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// Removes the next word from `text` and returns it; empty at the end.
std::string_view TakeWord(std::string_view* text) {
  const std::size_t begin = text->find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  text->remove_prefix(begin);
  const std::string_view word = text->substr(0, text->find(' '));
  text->remove_prefix(word.size());
  return word;
}

std::string Quoted(std::string_view word) {
  return '"' + Printable(std::string(word)) + '"';
}

}  // namespace

bool Y4mHeader::Read(std::string_view line, Y4mHeader* header, std::string* problem) {
  *header = {};
  const std::string_view signature = TakeWord(&line);
  *problem = Quoted(signature);
  if (signature != kSignature) return false;
  while (true) {
    const std::string_view parameter = TakeWord(&line);
    if (parameter.empty()) break;
    *problem = Quoted(parameter);
    if (!header->ReadParameter(parameter)) return false;
  }
  // Without the parameter C, a file is 4:2:0.
  *problem = header->bits == 0 ? "4:2:0" : "no size";
  return header->bits != 0 && header->width != 0 && header->height != 0;
}

bool Y4mHeader::ReadParameter(std::string_view parameter) {
  const std::string_view value = parameter.substr(1);
  constexpr int kMaxSide = FrameHeader::kMaxImageSize;
  switch (parameter.front()) {
    case 'W':
      return ParseNumber(value, 1, kMaxSide, &width);
    case 'H':
      return ParseNumber(value, 1, kMaxSide, &height);
    case 'C':
      bits = value == kTenBits ? 10 : 8;
      return value == kTenBits || value == kEightBits;
    case 'I':
      return value == "p" || value == "?";
    case 'X':
      return !parameter.starts_with(kRange) || parameter.substr(kRange.size()) == kLimited;
    default:
      // Frame rate, shape of pixels: a picture does not depend on them.
      return true;
  }
}

}  // namespace zlibvideo
