#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_PICTUREFILESSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_PICTUREFILESSINK_H

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "tools/decode/formats/NamePattern.h"
#include "tools/decode/formats/OutputFormat.h"
#include "tools/parallel/OrderedWork.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes a file for each picture, numbered by its message from 1. With "-" the files go to
/// standard output one after another; a name without a number takes one picture. Pictures are
/// encoded on several threads; an error with one of them leaves the files before it in place.
class PictureFilesSink : public FrameSink {
 public:
  /// Encodes a picture in three steps, which throw `std::bad_alloc` without memory. The first, for
  /// which alone `frame` is there, and the last, which replaces the contents of `file` by those of
  /// a whole file, are called for all pictures in order, the one between on any thread.
  using Completion = std::function<void(std::vector<unsigned char>* file)>;
  using Work = std::function<Completion()>;
  using Encode = std::function<Work(const FrameView& frame)>;

  /// Throws a `ToolError` when `path` is no `NamePattern`. With more than one of `jobs`, pictures
  /// are encoded on other threads: as many at once, up to
  /// `kMaxPicturesAtOnce`, and two more.
  PictureFilesSink(const std::string& path, unsigned int jobs, Encode encode);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;
  void CatchUp() override;
  void Finish() override { CatchUp(); }

 private:
  void WriteOldest();

  std::string fPath;
  Encode fEncode;
  NamePattern fPattern;
  bool fHasPicture = false;
  std::vector<unsigned char> fFile;
  /// Of the pictures that were begun and not written.
  std::deque<std::uint64_t> fNumbers;
  OrderedWork<Completion> fWork;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_PICTUREFILESSINK_H
