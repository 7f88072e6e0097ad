#ifndef ZLIBVIDEO_TOOLS_INFO_PICTUREPATCHES_H
#define ZLIBVIDEO_TOOLS_INFO_PICTUREPATCHES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Turns a sequence of pictures into PNG files of what changed from each to the next: the smallest
/// rectangle around it. Now and then a patch is a whole picture, so that nobody has to put more
/// than a few pictures' worth of patches on top of each other to see one.
class PicturePatches {
 public:
  struct Patch {
    /// Pixels, from the picture's top left corner.
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    /// Whether it is all of the picture and needs no patch before it.
    bool whole = false;
    std::vector<unsigned char> png;
  };

  /// Stops for good before the PNG files exceed `byteLimit` in all.
  explicit PicturePatches(std::uint64_t byteLimit) : fBytesLeft(byteLimit) {}

  /// The patch that leads from the picture before to `frame`; nothing when they are equal, when
  /// there is no picture yet, or after the limit.
  std::optional<Patch> Next(const FrameView& frame);
  /// Whether the limit kept a patch from being made.
  bool LimitReached() const { return fLimitReached; }

 private:
  Patch FindChange(const FrameView& frame) const;
  void Remember(const FrameView& frame, const Patch& patch);

  std::uint64_t fBytesLeft;
  bool fLimitReached = false;
  /// The picture before; as large as `fSize` says.
  std::vector<unsigned char> fPixels;
  FrameView fSize;
  /// Pixels of all patches since the last whole picture.
  std::size_t fPatchedPixels = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_PICTUREPATCHES_H
