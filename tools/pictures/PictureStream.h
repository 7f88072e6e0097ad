#ifndef ZLIBVIDEO_TOOLS_PICTURES_PICTURESTREAM_H
#define ZLIBVIDEO_TOOLS_PICTURES_PICTURESTREAM_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/pictures/PictureSource.h"

namespace zlibvideo {

/// Pictures that follow each other in an input, as a running program may write them. If a stop
/// signal ends the input, `Next` drops a picture that is not complete. If it is the first picture,
/// `Next` throws `StoppedBySignal`.
class PictureStream : public PictureSource {
 public:
  bool Next(Picture* picture) final;
  std::string Name() const final;
  bool IsStream() const final { return true; }
  bool EndsAtStopSignal() const final { return fInput->EndsAtStopSignal(); }

 protected:
  explicit PictureStream(std::unique_ptr<InputFile> input) : fInput(std::move(input)) {}

  /// Reads a picture as `Next` does. Returns false when the input ends before the picture.
  virtual bool ReadPicture(Picture* picture) = 0;

  InputFile* Input() { return fInput.get(); }
  /// Reads the `size` bytes of a picture, which are valid until the next call. Throws `ToolError`
  /// when the input has fewer.
  const std::vector<unsigned char>& ReadBytes(std::size_t size);

 private:
  std::unique_ptr<InputFile> fInput;
  /// Of the picture that is read, from 1.
  std::uint64_t fNumber = 0;
  std::vector<unsigned char> fBytes;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PICTURESTREAM_H
