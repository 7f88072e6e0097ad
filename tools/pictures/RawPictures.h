#ifndef ZLIBVIDEO_TOOLS_PICTURES_RAWPICTURES_H
#define ZLIBVIDEO_TOOLS_PICTURES_RAWPICTURES_H

#include <memory>
#include <utility>

#include "tools/pictures/PictureStream.h"

namespace zlibvideo {

/// Pixels of pictures of the same size, as `FrameView` has them, without gaps. Opacity is
/// ignored: many programs leave any value there.
class RawPictures : public PictureStream {
 public:
  /// Pixels, 1 to `FrameHeader::kMaxImageSize`.
  RawPictures(std::unique_ptr<InputFile> input, int width, int height)
      : PictureStream(std::move(input)), fSize{nullptr, width, height} {}

 private:
  bool ReadPicture(Picture* picture) override {
    if (!Input()->HasMore()) return false;
    CopyColours({ReadBytes(fSize.ByteCount()).data(), fSize.width, fSize.height}, picture);
    return true;
  }

  FrameView fSize;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_RAWPICTURES_H
