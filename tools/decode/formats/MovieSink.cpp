#include "tools/decode/formats/MovieSink.h"

#include "tools/files/ToolError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {

void MovieSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  if (!fFile) {
    fFile.emplace(fPath);
    Begin(frame);
  } else if (!fSize.HasSizeOf(frame)) {
    Finish();
    const std::string number = std::to_string(index + 1);
    throw ToolError(OutputName(fPath) + ": at message " + number + " the size changes from " +
                        SizeText(fSize.width, fSize.height) + " to " +
                        SizeText(frame.width, frame.height) +
                        ", and a movie has one size; for the rest, decode again with --from " +
                        number + " -o OTHER",
                    kExitDamagedInput);
  }
  Add(frame);
  fSize = {nullptr, frame.width, frame.height};
}

void MovieSink::Finish() {
  if (fSize.width == 0) return;  // memory may not have been enough for the first picture
  End();
  fFile->Commit();
}

}  // namespace zlibvideo
