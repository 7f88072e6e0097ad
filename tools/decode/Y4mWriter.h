#ifndef ZLIBVIDEO_TOOLS_DECODE_Y4MWRITER_H
#define ZLIBVIDEO_TOOLS_DECODE_Y4MWRITER_H

#include <string>
#include <vector>

#include "tools/cli/OutputFile.h"
#include "tools/decode/FrameRate.h"
#include "tools/decode/MovieWriter.h"

namespace zlibvideo {

/// Writes YUV4MPEG2 with as many chroma samples as luma ones (4:4:4), colours as `Bt709` has them:
/// 10-bit samples (C444p10, two bytes, least significant first) or 8-bit ones (C444).
class Y4mWriter : public MovieWriter {
 public:
  Y4mWriter(const std::string& path, const FrameView& first, FrameRate rate, bool use8Bit);

  void Add(const FrameView& frame) override;
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
  bool fUse8Bit;
  std::vector<unsigned char> fPlanes;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_Y4MWRITER_H
