#include "tools/pictures/RawPictures.h"

#include <utility>

namespace zlibvideo {

RawPictures::RawPictures(std::unique_ptr<InputFile> input, int width, int height)
    : PictureStream(std::move(input)), fWidth(width), fHeight(height) {}

bool RawPictures::ReadPicture(Picture* picture) {
  if (!Input()->HasMore()) return false;
  const FrameView size = {nullptr, fWidth, fHeight};
  const FrameView frame = {ReadBytes(size.ByteCount()).data(), fWidth, fHeight};
  picture->width = fWidth;
  picture->height = fHeight;
  CopyColours(frame, &picture->pixels);
  return true;
}

}  // namespace zlibvideo
