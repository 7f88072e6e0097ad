#include "tools/pictures/Y4mPictures.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "bitstream/FrameHeader.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/Bt709.h"
#include "tools/terminal/ParseNumber.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// Removes the next word from `text` and returns it. Empty at the end.
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

template <int kBits>
std::int32_t LoadSample(const unsigned char* plane, std::size_t index) {
  if constexpr (kBits == 8) return plane[index];
  // Higher bits can only be a mistake, not brightness.
  constexpr std::int32_t kMask = (1 << kBits) - 1;
  return (plane[index * 2] | plane[index * 2 + 1] << 8) & kMask;
}

/// Fills `pixels`, as a `Picture` has them, from planes of Y, Cb and Cr.
template <int kBits>
void Convert(const std::vector<unsigned char>& planes, std::vector<unsigned char>* pixels) {
  const std::size_t planeBytes = planes.size() / Y4mHeader::kPlanes;
  const unsigned char* y = planes.data();
  const unsigned char* cb = y + planeBytes;
  const unsigned char* cr = cb + planeBytes;
  unsigned char* out = pixels->data();
  const std::size_t count = pixels->size() / Picture::kPixelBytes;
  for (std::size_t i = 0; i < count; ++i) {
    const auto colour = Bt709<kBits>::ToRgb(
        {LoadSample<kBits>(y, i), LoadSample<kBits>(cb, i), LoadSample<kBits>(cr, i)});
    *out++ = static_cast<unsigned char>(colour.blue);
    *out++ = static_cast<unsigned char>(colour.green);
    *out++ = static_cast<unsigned char>(colour.red);
  }
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

bool Y4mPictures::ReadPicture(Picture* picture) {
  if (fHeader.bits == 0) ReadHeader();
  if (!Input()->HasMore()) return false;
  std::string line;
  const bool isMark =
      Input()->ReadLine(kMaxLine, &line) &&
      line.substr(0, line.find(' ')) == Y4mHeader::kFrameMark;  // with parameters or not
  // If the input ends here, `ReadBytes` reports the missing picture.
  if (!isMark && Input()->HasMore()) {
    throw ToolError(Name() + " does not begin with the line FRAME of y4m");
  }
  const std::vector<unsigned char>& planes = ReadBytes(fHeader.PictureBytes());
  picture->width = fHeader.width;
  picture->height = fHeader.height;
  picture->pixels.resize(fHeader.PixelCount() * Picture::kPixelBytes);
  if (fHeader.bits == 8) {
    Convert<8>(planes, &picture->pixels);
  } else {
    Convert<10>(planes, &picture->pixels);
  }
  return true;
}

void Y4mPictures::ReadHeader() {
  std::string line;
  if (!Input()->ReadLine(kMaxLine, &line)) {
    Input()->CheckError();
    throw ToolError(Input()->Name() + ": its first line, of y4m, is cut off or too long");
  }
  std::string problem;
  if (Y4mHeader::Read(line, &fHeader, &problem)) return;
  throw ToolError(Input()->Name() + ": y4m with " + problem +
                  " cannot be read: it must be 4:4:4 of 10 or 8 bits (C444p10, C444), progressive, "
                  "of limited range and of up to 4095 pixels a side");
}

}  // namespace zlibvideo
