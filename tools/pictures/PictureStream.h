#ifndef ZLIBVIDEO_TOOLS_PICTURES_PICTURESTREAM_H
#define ZLIBVIDEO_TOOLS_PICTURES_PICTURESTREAM_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/files/ByteInput.h"
#include "tools/pictures/PictureSource.h"

namespace zlibvideo {

/// Pictures that follow one another in one input, as a program that is running may write them.
/// When a signal ends the input, a picture of which a part was read is dropped; before the first
/// picture, the signal takes its course.
class PictureStream : public PictureSource {
 public:
  bool Next(Picture* picture) final;
  std::string Name() const final;
  bool IsStream() const final { return true; }

 protected:
  explicit PictureStream(ByteInput input);

  /// Reads a picture as `Next` does; false when the input ends before it.
  virtual bool ReadPicture(Picture* picture) = 0;

  ByteInput* Input() { return &fInput; }
  /// Reads the `size` bytes of a picture, which are valid until the next call. Throws `ToolError`
  /// when the input ends before or among them.
  const std::vector<unsigned char>& ReadBytes(std::size_t size);

 private:
  ByteInput fInput;
  /// The one that is read, from 1.
  std::uint64_t fNumber = 0;
  std::vector<unsigned char> fBytes;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PICTURESTREAM_H
