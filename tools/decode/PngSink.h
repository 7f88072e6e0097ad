#ifndef ZLIBVIDEO_TOOLS_DECODE_PNGSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_PNGSINK_H

#include <string>
#include <vector>

#include "tools/decode/FrameSink.h"
#include "tools/decode/NamePattern.h"

namespace zlibvideo {

/// Writes a PNG file for each picture, numbered by its message from 1. With "-" the files go to
/// standard output one after another; a name without a number takes one picture.
class PngSink : public FrameSink {
 public:
  explicit PngSink(const std::string& output);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;

 private:
  std::string fOutput;
  NamePattern fPattern;
  bool fWritten = false;
  std::vector<unsigned char> fPng;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_PNGSINK_H
