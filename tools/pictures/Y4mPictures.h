#ifndef ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H
#define ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "tools/pictures/PictureStream.h"
#include "tools/pictures/Y4mHeader.h"

namespace zlibvideo {

/// The pictures of a YUV4MPEG2 file, of the kinds that `Y4mHeader` reads, with the colours of
/// `Bt709`. 10-bit samples restore exactly the pictures that `decode` wrote.
class Y4mPictures : public PictureStream {
 public:
  explicit Y4mPictures(std::unique_ptr<InputFile> input) : PictureStream(std::move(input)) {}

 private:
  /// Bytes.
  static constexpr std::size_t kMaxLine = 1024;

  bool ReadPicture(Picture* picture) override;
  void ReadHeader();

  /// Has no size before `ReadHeader`.
  Y4mHeader fHeader;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H
