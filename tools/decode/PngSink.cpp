#include "tools/decode/PngSink.h"

#include "tools/cli/OutputFile.h"
#include "tools/cli/ToolError.h"
#include "tools/pictures/Png.h"

namespace zlibvideo {

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

}  // namespace zlibvideo
