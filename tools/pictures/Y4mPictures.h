#ifndef ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H
#define ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H

#include <cstddef>
#include <utility>
#include <vector>

#include "tools/pictures/PictureStream.h"
#include "tools/pictures/Y4mHeader.h"

namespace zlibvideo {

/// The pictures of a YUV4MPEG2 file, in the kinds that `Y4mHeader` knows and colours as `Bt709` has
/// them. With 10-bit samples they are those that `decode` wrote.
class Y4mPictures : public PictureStream {
 public:
  explicit Y4mPictures(ByteInput input) : PictureStream(std::move(input)) {}

 private:
  /// Bytes of a line at most.
  static constexpr std::size_t kMaxLine = 1024;

  bool ReadPicture(Picture* picture) override;
  void ReadHeader();

  /// Without a size until it is read.
  Y4mHeader fHeader;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H
