#include "tools/pictures/Y4mPictures.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "tools/files/ToolError.h"
#include "tools/pictures/Bt709.h"

namespace zlibvideo {
namespace {

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
