#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGSTREAM_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGSTREAM_H

#include <memory>
#include <utility>

#include "tools/pictures/PictureStream.h"
#include "tools/pictures/Png.h"

namespace zlibvideo {

/// PNG files that follow one another, as a pipe carries them.
class PngStream : public PictureStream {
 public:
  explicit PngStream(std::unique_ptr<InputFile> input) : PictureStream(std::move(input)) {}

 private:
  bool ReadPicture(Picture* picture) override {
    if (!Input()->HasMore()) return false;
    *picture = ReadPng(Input(), Name());
    return true;
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGSTREAM_H
