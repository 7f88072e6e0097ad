#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_PICTUREFILESSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_PICTUREFILESSINK_H

#include <functional>
#include <string>
#include <vector>

#include "tools/decode/formats/NamePattern.h"
#include "tools/decode/formats/OutputFormat.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes a file for each picture, numbered by its message from 1. With "-" the files go to
/// standard output one after another; a name without a number takes one picture.
class PictureFilesSink : public FrameSink {
 public:
  /// Replaces the contents of `file` by those of a whole file with the picture.
  using Encode = std::function<void(const FrameView& frame, std::vector<unsigned char>* file)>;

  /// Throws a `ToolError` when `path` is no `NamePattern`.
  PictureFilesSink(const std::string& path, Encode encode);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;

 private:
  std::string fPath;
  Encode fEncode;
  NamePattern fPattern;
  bool fWritten = false;
  std::vector<unsigned char> fFile;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_PICTUREFILESSINK_H
