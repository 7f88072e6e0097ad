#include "tools/decode/formats/PictureFilesSink.h"

#include <filesystem>
#include <utility>

#include "tools/cli/OutputFile.h"
#include "tools/cli/ToolError.h"

namespace zlibvideo {

PictureFilesSink::PictureFilesSink(const std::string& path, Encode encode)
    : fPath(path), fEncode(std::move(encode)) {
  std::string problem;
  if (!NamePattern::Parse(path, &fPattern, &problem)) throw ToolError(path + ": " + problem);
}

void PictureFilesSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  const std::uint64_t number = index + 1;
  if (fWritten && !fPattern.HasNumber() && !IsStandardOutput(fPath)) {
    throw ToolError(fPath + ": takes one picture, which is written; for picture " +
                    std::to_string(number) + " onwards give a numbered name, such as %04d" +
                    std::filesystem::path(fPath).extension().string() +
                    ", or choose one picture with --from and --to");
  }
  fEncode(frame, &fFile);
  OutputFile file(fPattern.Name(number));
  file.Write(fFile.data(), fFile.size());
  file.Commit();
  fWritten = true;
}

}  // namespace zlibvideo
