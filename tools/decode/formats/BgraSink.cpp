#include <memory>

#include "tools/decode/formats/MovieSink.h"

namespace zlibvideo {
namespace {

/// Writes the pixels of all pictures in a row, as `FrameView` has them.
class BgraSink : public MovieSink {
 public:
  using MovieSink::MovieSink;

 private:
  void Add(const FrameView& frame) override { File().Write(frame.pixels, frame.ByteCount()); }
};

}  // namespace

std::unique_ptr<FrameSink> MakeBgraSink(const OutputOptions& options) {
  return std::make_unique<BgraSink>(options.path);
}

}  // namespace zlibvideo
