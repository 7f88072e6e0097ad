#include "tools/decode/RunDecode.h"

#include <memory>
#include <string>

#include "bitstream/StandaloneFinder.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/stream/Diagnosis.h"
#include "tools/stream/FailureRun.h"
#include "tools/stream/MessageFile.h"
#include "tools/stream/StreamDecoder.h"
#include "tools/terminal/StandardError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

using Result = MessageFileReader::Result;

std::unique_ptr<FrameSink> MakeSink(const DecodeOptions& options) {
  if (!options.verify.empty()) return MakeVerifySink(options.verify);
  return options.format->make(options.output);
}

/// A run over a message file.
class DecodeRun {
 public:
  explicit DecodeRun(const DecodeOptions& options)
      : fOptions(options), fReader(options.input), fSink(MakeSink(options)) {}

  int Run();

 private:
  /// Goes to the last message from which the range can be decoded, if the input is a file.
  void SkipAhead();
  void TakeOne(const FileMessage& message, bool decoded);
  void TellFailure(const FileMessage& message) const;
  void TellHeldBack();
  bool IsWanted(const FileMessage& message) const;
  bool IsComparison() const { return !fOptions.verify.empty(); }
  /// Whether a progress bar and a line at the end belong on the terminal.
  bool ShowsProgress() const;
  /// Throws when the range begins after the whole stream: there is no output then.
  void RequireRange(Result end) const;
  ExitStatus Conclude(Result end) const;

  const DecodeOptions& fOptions;
  MessageFileReader fReader;
  std::unique_ptr<FrameSink> fSink;
  StreamDecoder fDecoder;
  FailureRun fFailureRun;
  /// 0 in a comparison, which expects the failures of its list and reports the others itself.
  std::uint64_t fFailures = 0;
  std::uint64_t fPicturesWritten = 0;
};

int DecodeRun::Run() {
  if (fOptions.from > 1 && fReader.FileSize()) SkipAhead();
  const StreamEnd end = DecodeMessages(
      &fReader, &fDecoder, fOptions.to, ShowsProgress(),
      [this](const FileMessage& message, bool decoded) { TakeOne(message, decoded); });
  if (fReader.MessageCount() == 0) throw ToolError(end.problem);
  fSink->CatchUp();
  TellHeldBack();
  // Completing the output may end with an error of its own.
  if (end.result != Result::kEnd) PrintLine(end.problem);
  if (end.result == Result::kReadError) {
    // A comparison is dropped: nothing is known of the rest of its list.
    if (!IsComparison()) fSink->Finish();
    return kExitCouldNotRun;
  }
  RequireRange(end.result);
  fSink->Finish();
  return Conclude(end.result);
}

void DecodeRun::SkipAhead() {
  const FileMessage first;
  FileMessage entry;
  FileMessage message;
  StandaloneFinder finder(kStateNone);
  while (fReader.MessageCount() < fOptions.from && fReader.Next(&message) == Result::kMessage) {
    if (finder.Next(message.bytes, message.length)) entry = message;
  }
  fReader.GoTo(entry);
  if (entry.index == 0 || fReader.Next(&message) != Result::kMessage) return;
  // A payload may be damaged: only decoding tells.
  if (fDecoder.Decode(message) && fDecoder.Decoder().IsComplete()) {
    fReader.GoTo(entry);
  } else {
    fDecoder.Restart();
    fReader.GoTo(first);
  }
}

void DecodeRun::TakeOne(const FileMessage& message, bool decoded) {
  if (!decoded) fSink->CatchUp();  // errors with earlier pictures come first
  if (!IsComparison()) {
    if (!decoded) ++fFailures;
    if (!fFailureRun.HoldsBack(message, decoded)) {
      TellHeldBack();
      if (!decoded) TellFailure(message);
    }
  }
  if (IsWanted(message)) {
    if (decoded) {
      fSink->WritePicture(message.index, fDecoder.Frame());
      ++fPicturesWritten;
    } else {
      fSink->NoteFailure(message.index, fDecoder.Frame());
    }
  }
  // The next message of a live stream may come late. Its pictures so far are shown now.
  if (!fReader.HasInput()) fSink->CatchUp();
}

void DecodeRun::TellFailure(const FileMessage& message) const {
  const MessageOutline outline = MessageOutline::Read({message.bytes, message.length});
  PrintLine(fReader.Name() + ": message " + std::to_string(message.Number()) + " at byte " +
            std::to_string(message.offset) + ": " +
            ExplainFailure(Diagnose(fDecoder.Decoder(), outline)));
}

void DecodeRun::TellHeldBack() {
  const std::string sentence = fFailureRun.TakeHeldBack();
  if (!sentence.empty()) PrintLine(fReader.Name() + ": " + sentence);
}

bool DecodeRun::IsWanted(const FileMessage& message) const {
  return fOptions.from <= message.Number() && message.Number() <= fOptions.to;
}

bool DecodeRun::ShowsProgress() const {
  return !fOptions.quiet && HasRoomForProgress(fOptions.output.path);
}

void DecodeRun::RequireRange(Result end) const {
  if (fOptions.from <= fReader.MessageCount()) return;
  throw ToolError(
      "--from " + std::to_string(fOptions.from) + ": " + fReader.Name() + " has only " +
      Counted(fReader.MessageCount(), end == Result::kCutOff ? "whole message" : "message"));
}

ExitStatus DecodeRun::Conclude(Result end) const {
  const std::string messages = Counted(fReader.MessageCount(), "message");
  if (fOptions.WritesPictures() && fPicturesWritten == 0) {
    PrintLine(fReader.Name() + ": no picture was written (" + messages + " read)");
  } else if (ShowsProgress()) {
    const std::string& output = fOptions.output.path;
    PrintNote(IsComparison() ? messages + ", all as in " + InputName(fOptions.verify)
                             : (output.empty() ? fReader.Name() : OutputName(output)) + ": " +
                                   Counted(fPicturesWritten, "picture"));
  }
  return fFailures > 0 || end == Result::kCutOff ? kExitDamagedInput : kExitSuccess;
}

}  // namespace

int RunDecode(const DecodeOptions& options) {
  ProtectInput(options.input);
  if (options.WritesPictures()) RefuseTerminal(options.output.path);
  return DecodeRun(options).Run();
}

}  // namespace zlibvideo
