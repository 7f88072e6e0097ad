#include <memory>
#include <string>

#include "tools/decode/formats/MovieSink.h"
#include "tools/files/OutputFile.h"

namespace zlibvideo {
namespace {

/// Writes the pixels of all pictures one after another, as `FrameView` has them.
class BgraWriter : public MovieWriter {
 public:
  explicit BgraWriter(const std::string& path) : fFile(path) {}

  void Add(const FrameView& frame) override { fFile.Write(frame.pixels, frame.ByteCount()); }
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
};

}  // namespace

std::unique_ptr<FrameSink> MakeBgraSink(const OutputOptions& options) {
  return std::make_unique<MovieSink>(options.path,
                                     [](const std::string& path, const FrameView& /*first*/) {
                                       return std::make_unique<BgraWriter>(path);
                                     });
}

}  // namespace zlibvideo
