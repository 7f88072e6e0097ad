#ifndef ZLIBVIDEO_TOOLS_PICTURES_RAWPICTURES_H
#define ZLIBVIDEO_TOOLS_PICTURES_RAWPICTURES_H

#include <memory>

#include "tools/pictures/PictureStream.h"

namespace zlibvideo {

/// Pixels of pictures of one size, as `FrameView` has them, with nothing between. Opacity is
/// ignored: many programs leave any value there.
class RawPictures : public PictureStream {
 public:
  /// Pixels, 1 to `FrameHeader::kMaxImageSize`.
  RawPictures(std::unique_ptr<InputFile> input, int width, int height);

 private:
  bool ReadPicture(Picture* picture) override;

  int fWidth;
  int fHeight;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_RAWPICTURES_H
