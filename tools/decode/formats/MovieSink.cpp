#include "tools/decode/formats/MovieSink.h"

#include <utility>

#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {

MovieSink::MovieSink(std::string path, OpenWriter open)
    : fPath(std::move(path)), fOpen(std::move(open)) {}

void MovieSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  if (fWriter == nullptr) {
    std::unique_ptr<MovieWriter> writer = fOpen(fPath, frame);
    writer->Add(frame);
    fWriter = std::move(writer);  // a movie has at least one picture, also without memory
    fSize = {nullptr, frame.width, frame.height};
    return;
  }
  if (fSize.HasSizeOf(frame)) return fWriter->Add(frame);
  Finish();
  const std::string number = std::to_string(index + 1);
  throw ToolError(OutputName(fPath) + ": at message " + number + " the size changes from " +
                      SizeText(fSize.width, fSize.height) + " to " +
                      SizeText(frame.width, frame.height) +
                      ", and a movie has one size; for the rest, decode again with --from " +
                      number + " -o OTHER",
                  kExitDamagedInput);
}

void MovieSink::Finish() {
  if (fWriter != nullptr) fWriter->Finish();
  fWriter.reset();
}

}  // namespace zlibvideo
