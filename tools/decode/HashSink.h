#ifndef ZLIBVIDEO_TOOLS_DECODE_HASHSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_HASHSINK_H

#include <string>

#include "tools/common/OutputFile.h"
#include "tools/decode/FrameSink.h"
#include "tools/decode/HashLine.h"

namespace zlibvideo {

/// Writes a `HashLine` for every message, failed ones included.
class HashSink : public FrameSink {
 public:
  explicit HashSink(const std::string& path) : fFile(path) {}

  void WritePicture(std::uint64_t index, const FrameView& frame) override {
    fFile.Write(HashLine(index, true, frame) + '\n');
  }
  void NoteFailure(std::uint64_t index, const FrameView& frame) override {
    fFile.Write(HashLine(index, false, frame) + '\n');
  }
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_HASHSINK_H
