#include "tools/record/RecordPictures.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/StopSignal.h"
#include "tools/files/ToolError.h"
#include "tools/record/FrameEncoder.h"
#include "tools/record/RecordError.h"
#include "tools/terminal/PrintLine.h"
#include "tools/terminal/ProgressBar.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// The writer would refuse the message as well, but its error does not name the picture.
void CheckLength(std::size_t length) {
  if (length <= MessageFileWriter::kMaxLength) return;
  throw RecordError("its message has " + std::to_string(length) + " bytes; the limit is " +
                    std::to_string(MessageFileWriter::kMaxLength));
}

/// Counts in `done` the pictures that were recorded, also when it throws.
void EncodeAll(PictureSource* source, const RecordOptions& options, bool showProgress,
               MessageFileWriter* writer, std::uint64_t* done) {
  ProgressBar progress(showProgress, "picture", source->Count());
  std::optional<FrameEncoder> encoder;
  Picture picture;
  int width = 0;
  int height = 0;
  try {
    while (source->Next(&picture)) {
      const bool sizeChanges = picture.width != width || picture.height != height;
      // A screen may change its resolution. In a list of files another size is a mistake, which
      // the encoder refuses.
      if (!encoder || (sizeChanges && source->IsStream())) {
        encoder.emplace(picture.width, picture.height, options);
        width = picture.width;
        height = picture.height;
      }
      const std::vector<unsigned char>& message = encoder->Encode(picture);
      CheckLength(message.size());
      writer->Write(message.data(), message.size());
      ++*done;
      if (showProgress && source->EndsAtStopSignal()) {
        PrintAtStopSignal("\nending after this picture ...\n");
      }
      progress.Update(*done, *done);
    }
  } catch (const RecordError& error) {
    throw ToolError(source->Name() + ": " + error.what());
  } catch (const std::bad_alloc&) {
    throw ToolError(source->Name() + ": not enough memory");
  }
}

/// Commits the pictures that were recorded before `error`, and throws both facts.
[[noreturn]] void KeepWhole(const std::string& error, std::uint64_t done,
                            MessageFileWriter* writer) {
  try {
    writer->CommitWhole();
  } catch (const ToolError& another) {
    throw ToolError(error + "; " + another.what());
  }
  throw ToolError(error + "; " + Counted(done, "picture") + (done == 1 ? " was" : " were") +
                      " recorded before this",
                  kExitDamagedInput);
}

}  // namespace

void RecordPictures(PictureSource* source, const RecordOptions& options, bool showProgress,
                    MessageFileWriter* writer) {
  std::uint64_t done = 0;
  try {
    EncodeAll(source, options, showProgress, writer, &done);
  } catch (const ToolError& error) {
    if (!source->IsStream() || done == 0) throw;
    KeepWhole(error.what(), done, writer);
  }
  writer->Commit();
  if (showProgress) {
    PrintNote(writer->Name() + ": " + Counted(done, "picture") + ", " +
              HumanBytes(writer->WholeBytes()));
  }
}

}  // namespace zlibvideo
