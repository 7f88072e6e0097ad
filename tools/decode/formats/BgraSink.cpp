#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/files/OutputFile.h"

namespace zlibvideo {
namespace {

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

}  // namespace

std::unique_ptr<FrameSink> MakeBgraSink(const OutputOptions& options) {
  return std::make_unique<BgraSink>(options.path);
}

}  // namespace zlibvideo
