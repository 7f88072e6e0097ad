#ifndef ZLIBVIDEO_TOOLS_DECODE_HASHSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_HASHSINK_H

#include <string>

#include "tools/cli/OutputFile.h"
#include "tools/decode/FrameSink.h"
#include "tools/decode/HashLine.h"

namespace zlibvideo {

/// Writes a `HashLine` for every message, failed ones included.
class HashSink : public FrameSink {
 public:
  explicit HashSink(const std::string& path) : fFile(path) {}

  void WritePicture(std::uint64_t index, const FrameView& frame) override {
    fFile.WriteLine(HashLine(index, true, frame));
  }
  void NoteFailure(std::uint64_t index, const FrameView& frame) override {
    fFile.WriteLine(HashLine(index, false, frame));
  }
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_HASHSINK_H
