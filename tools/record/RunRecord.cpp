#include "tools/record/RunRecord.h"

#include <string.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/StopSignal.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/Png.h"
#include "tools/pictures/PngPictures.h"
#include "tools/pictures/RawPictures.h"
#include "tools/pictures/Y4mPictures.h"
#include "tools/record/FrameEncoder.h"
#include "tools/record/RecordError.h"
#include "tools/stream/MessageFile.h"
#include "tools/terminal/StandardError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// A shell sorts 1.png, 10.png, 2.png.
void NoteOrder(const std::vector<std::string>& paths) {
  const auto isAlphabetical = [](const std::string& a, const std::string& b) {
    return a < b && strverscmp(a.c_str(), b.c_str()) > 0;
  };
  const auto place = std::adjacent_find(paths.begin(), paths.end(), isAlphabetical);
  if (place == paths.end()) return;
  PrintLine("note: " + place[0] + " is recorded before " + place[1] +
            "; for the order of numbers, use names with leading zeros (decode -o %04d.png), or "
            "$(ls -v FILES)");
}

/// Opens the pictures. The first bytes of a single input tell its kind unless it is raw.
std::unique_ptr<PictureSource> OpenPictures(const RecordArguments& arguments) {
  if (arguments.inputs.size() > 1) {
    return std::make_unique<PngFiles>(arguments.inputs, arguments.options.jobs);
  }
  auto input = std::make_unique<InputFile>(arguments.inputs.front());
  // A file can be read again. The pictures of a pipe are gone.
  if (!input->Size()) input->EndAtStopSignal();
  if (arguments.rawWidth != 0) {
    return std::make_unique<RawPictures>(std::move(input), arguments.rawWidth, arguments.rawHeight);
  }
  if (input->StartsWith(Y4mHeader::kSignature)) {
    return std::make_unique<Y4mPictures>(std::move(input));
  }
  // `PngStream` also reports an input without a byte, and a signal before the first picture.
  if (input->StartsWith(kPngSignature) || !input->HasMore() || input->EndedBySignal()) {
    return std::make_unique<PngStream>(std::move(input));
  }
  throw ToolError(input->Name() +
                  ": is neither PNG nor y4m; if it is raw pictures, give --size WIDTHxHEIGHT");
}

/// A recording.
class Recording {
 public:
  explicit Recording(const RecordArguments& arguments)
      : fOptions(arguments.options),
        fShowsProgress(!arguments.quiet && HasRoomForProgress(arguments.output)),
        fWriter(arguments.output),
        fSource(OpenPictures(arguments)) {}

  void Run();

 private:
  void AddAll();
  void Add(const Picture& picture);
  [[noreturn]] void KeepWhole(const std::string& error);

  const RecordOptions& fOptions;
  const bool fShowsProgress;
  MessageFileWriter fWriter;
  std::unique_ptr<PictureSource> fSource;
  std::optional<FrameEncoder> fEncoder;
  /// Of the last picture.
  int fWidth = 0;
  int fHeight = 0;
  std::uint64_t fDone = 0;
};

void Recording::Run() {
  try {
    AddAll();
  } catch (const ToolError& error) {
    if (!fSource->IsStream() || fDone == 0) throw;
    KeepWhole(error.what());
  }
  fWriter.Commit();
  if (!fShowsProgress) return;
  PrintNote(fWriter.Name() + ": " + Counted(fDone, "picture") + ", " +
            HumanBytes(fWriter.WholeBytes()));
}

void Recording::AddAll() {
  ProgressLine progress(fShowsProgress, "picture", fSource->Count());
  Picture picture;
  try {
    while (fSource->Next(&picture)) {
      if (StopSignal() != 0 && !fSource->EndsAtStopSignal()) throw StoppedBySignal();
      Add(picture);
      ++fDone;
      progress.Update(fDone, fDone);
      if (fShowsProgress && fSource->EndsAtStopSignal()) {
        PrintAtStopSignal("\nending after this picture ...\n");
      }
    }
  } catch (const RecordError& error) {
    throw ToolError(fSource->Name() + ": " + error.what());
  } catch (const std::bad_alloc&) {
    throw ToolError(fSource->Name() + ": not enough memory");
  }
}

void Recording::Add(const Picture& picture) {
  // A screen may change its resolution. In a list of files another size is a mistake, which the
  // encoder refuses.
  const bool changesSize = picture.width != fWidth || picture.height != fHeight;
  if (!fEncoder || (changesSize && fSource->IsStream())) {
    fEncoder.emplace(picture.width, picture.height, fOptions);
    fWidth = picture.width;
    fHeight = picture.height;
  }
  const std::vector<unsigned char>& message = fEncoder->Encode(picture);
  if (message.size() > MessageFileWriter::kMaxLength) {
    throw RecordError("its message has " + std::to_string(message.size()) +
                      " bytes; the limit is " + std::to_string(MessageFileWriter::kMaxLength));
  }
  fWriter.Write(message.data(), message.size());
}

/// Commits the pictures that were recorded before `error`, and throws both facts.
void Recording::KeepWhole(const std::string& error) {
  try {
    fWriter.CommitWhole();
  } catch (const ToolError& another) {
    throw ToolError(error + "; " + another.what());
  }
  throw ToolError(error + "; " + Counted(fDone, "picture") + (fDone == 1 ? " was" : " were") +
                      " recorded before this",
                  kExitDamagedInput);
}

}  // namespace

int RunRecord(const RecordArguments& arguments) {
  for (const std::string& path : arguments.inputs) ProtectInput(path);
  RefuseTerminal(arguments.output);
  NoteOrder(arguments.inputs);
  Recording(arguments).Run();
  return kExitSuccess;
}

}  // namespace zlibvideo
