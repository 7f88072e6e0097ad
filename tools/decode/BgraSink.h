#ifndef ZLIBVIDEO_TOOLS_DECODE_BGRASINK_H
#define ZLIBVIDEO_TOOLS_DECODE_BGRASINK_H

#include <optional>
#include <string>

#include "tools/cli/OutputFile.h"
#include "tools/decode/FrameSink.h"

namespace zlibvideo {

/// Writes the pixels of all pictures one after another into one file, as `FrameView` has them. The
/// file appears with the first picture.
class BgraSink : public FrameSink {
 public:
  explicit BgraSink(std::string path) : fPath(std::move(path)) {}

  void WritePicture(std::uint64_t /*index*/, const FrameView& frame) override {
    if (!fFile.has_value()) fFile.emplace(fPath);
    fFile->Write(frame.pixels, frame.ByteCount());
  }
  void Finish() override {
    if (fFile.has_value()) fFile->Commit();
  }

 private:
  std::string fPath;
  std::optional<OutputFile> fFile;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_BGRASINK_H
