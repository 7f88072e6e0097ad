#include "tools/decode/formats/MovieSink.h"

#include <filesystem>
#include <utility>

#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/PrintLine.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {

MovieSink::MovieSink(std::string path, OpenWriter open)
    : fPath(std::move(path)), fOpen(std::move(open)) {}

void MovieSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  if (fWriter == nullptr || !fSize.HasSizeOf(frame)) BeginNextFile(index, frame);
  fWriter->Add(frame);
  fHasPicture = true;
}

void MovieSink::Finish() {
  // Without memory for its first picture, a movie is dropped.
  if (fWriter != nullptr && fHasPicture) fWriter->Finish();
  fWriter.reset();
}

void MovieSink::BeginNextFile(std::uint64_t index, const FrameView& frame) {
  const bool sizeChanges = fWriter != nullptr;
  Finish();
  ++fFileCount;
  if (sizeChanges) {
    const std::string change = OutputName(fPath) + ": at message " + std::to_string(index + 1) +
                               " the size changes from " + SizeText(fSize.width, fSize.height) +
                               " to " + SizeText(frame.width, frame.height) +
                               " and a movie has one size; ";
    if (IsWrittenDirectly(fPath)) {
      throw ToolError(change + "it ends here; with -o FILE each size gets its own file");
    }
    PrintLine(change + "it continues in " + FileName());
  }
  fSize = {nullptr, frame.width, frame.height};
  fHasPicture = false;
  fWriter = fOpen(FileName(), frame);
}

std::string MovieSink::FileName() const {
  if (fFileCount <= 1) return fPath;
  const std::filesystem::path path(fPath);
  std::filesystem::path name = path.stem();
  name += "-" + std::to_string(fFileCount);
  name += path.extension();
  return (path.parent_path() / name).string();
}

}  // namespace zlibvideo
