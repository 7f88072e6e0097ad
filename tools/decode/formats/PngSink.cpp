#include <memory>
#include <string>
#include <vector>

#include "tools/cli/OutputFile.h"
#include "tools/cli/ToolError.h"
#include "tools/decode/formats/NamePattern.h"
#include "tools/decode/formats/OutputFormat.h"
#include "tools/pictures/Png.h"

namespace zlibvideo {
namespace {

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

PngSink::PngSink(const std::string& output) : fOutput(output) {
  std::string problem;
  if (!NamePattern::Parse(output, &fPattern, &problem)) throw ToolError(output + ": " + problem);
}

void PngSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  const std::uint64_t number = index + 1;
  if (fWritten && !fPattern.HasNumber() && !IsStandardOutput(fOutput)) {
    throw ToolError(fOutput + ": takes one picture, which is written; for picture " +
                    std::to_string(number) +
                    " onwards give a numbered name, such as %04d.png, or choose one picture "
                    "with --from and --to");
  }
  EncodePng(frame, &fPng);
  OutputFile file(fPattern.Name(number));
  file.Write(fPng.data(), fPng.size());
  file.Commit();
  fWritten = true;
}

}  // namespace

std::unique_ptr<FrameSink> MakePngSink(const OutputOptions& options) {
  return std::make_unique<PngSink>(options.path);
}

}  // namespace zlibvideo
