#include "tools/record/RecordPictures.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "host/standin/StandInMessage.h"
#include "tools/files/ToolError.h"
#include "tools/record/FrameEncoder.h"
#include "tools/record/RecordError.h"
#include "tools/terminal/ProgressBar.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// Refuses what the writer would refuse, but by an error that will name the picture.
void CheckLength(std::size_t length) {
  if (length <= StandInMessage::kMaxLength) return;
  throw RecordError("its message takes " + std::to_string(length) + " bytes; the limit is " +
                    std::to_string(StandInMessage::kMaxLength));
}

/// Counts in `done` the pictures that were recorded, also when it throws.
void EncodeAll(PictureSource* source, const RecordOptions& options, bool showProgress,
               MessageFileWriter* writer, std::uint64_t* done) {
  ProgressBar progress(showProgress, "picture", source->Count());
  std::optional<FrameEncoder> encoder;
  Picture picture;
  try {
    while (source->Next(&picture)) {
      if (!encoder) encoder.emplace(picture.width, picture.height, options);
      const std::vector<unsigned char>& message = encoder->Encode(picture);
      CheckLength(message.size());
      writer->Write(message.data(), message.size());
      ++*done;
      progress.Update(*done, *done);
    }
  } catch (const RecordError& error) {
    throw ToolError(source->Name() + ": " + error.what());
  } catch (const std::bad_alloc&) {
    throw ToolError(source->Name() + ": not enough memory");
  }
}

/// Puts in place what was recorded before the error, and throws that with what became of it.
[[noreturn]] void KeepWhole(const std::string& error, std::uint64_t done,
                            MessageFileWriter* writer) {
  try {
    writer->CommitWhole();
  } catch (const ToolError& another) {
    throw ToolError(error + "; " + another.what());
  }
  throw ToolError(error + "; recorded is what came before: " + Counted(done, "picture"),
                  kExitDamagedInput);
}

}  // namespace

void RecordPictures(PictureSource* source, const RecordOptions& options, bool showProgress,
                    MessageFileWriter* writer) {
  std::uint64_t done = 0;
  try {
    EncodeAll(source, options, showProgress, writer, &done);
    writer->Commit();
  } catch (const ToolError& error) {
    if (!source->IsStream() || done == 0 || error.IsReaderLeft()) throw;
    KeepWhole(error.what(), done, writer);
  }
}

}  // namespace zlibvideo
