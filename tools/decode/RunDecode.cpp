#include "tools/decode/RunDecode.h"

#include <memory>
#include <string>

#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/stream/Diagnosis.h"
#include "tools/stream/MessageFile.h"
#include "tools/stream/StreamDecoder.h"
#include "tools/terminal/PrintLine.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

using Result = MessageFileReader::Result;

std::unique_ptr<FrameSink> MakeSink(const DecodeOptions& options) {
  if (!options.verify.empty()) return MakeVerifySink(options.verify);
  return options.format->make(options.output);
}

/// One run over a message file.
class DecodeRun {
 public:
  explicit DecodeRun(const DecodeOptions& options)
      : fOptions(options), fReader(options.input), fSink(MakeSink(options)) {}

  int Run();

 private:
  /// Completes the output although the stream was not read to its end. A comparison is dropped:
  /// nothing can be said about the rest of its list.
  void KeepOutput();
  void TakeOne(const FileMessage& message, bool decoded);
  void TellFailure(const FileMessage& message) const;
  bool IsWanted(const FileMessage& message) const;
  /// A bar would break up output that goes to the same terminal.
  bool WantsProgressBar() const;
  /// Throws when the whole stream was read and the range begins after it: no output is made.
  void RequireRange(Result end) const;
  ExitStatus Conclude(Result end) const;

  const DecodeOptions& fOptions;
  MessageFileReader fReader;
  std::unique_ptr<FrameSink> fSink;
  StreamDecoder fDecoder;
  std::uint64_t fFailures = 0;
  std::uint64_t fPicturesWritten = 0;
};

int DecodeRun::Run() {
  const StreamEnd end = DecodeMessages(
      &fReader, &fDecoder, fOptions.to, WantsProgressBar(),
      [this](const FileMessage& message, bool decoded) { TakeOne(message, decoded); });
  if (fReader.MessageCount() == 0) throw ToolError(end.problem);
  fSink->CatchUp();
  // Before the output is completed, which may end with an error of its own.
  if (end.result != Result::kEnd) PrintLine(end.problem);
  if (end.result == Result::kReadError) {
    KeepOutput();
    return kExitCouldNotRun;
  }
  RequireRange(end.result);
  fSink->Finish();
  return Conclude(end.result);
}

void DecodeRun::KeepOutput() {
  if (fOptions.verify.empty()) fSink->Finish();
}

void DecodeRun::TakeOne(const FileMessage& message, bool decoded) {
  if (!decoded) {
    ++fFailures;
    fSink->CatchUp();  // what is wrong with earlier pictures is told first
    // A comparison expects listed failures and reports all others itself.
    if (fOptions.verify.empty()) TellFailure(message);
  }
  if (!IsWanted(message)) return;
  if (!decoded) return fSink->NoteFailure(message.index, fDecoder.Frame());
  fSink->WritePicture(message.index, fDecoder.Frame());
  ++fPicturesWritten;
  // Whoever watches a stream as it is sent has each picture before the next message.
  if (!fReader.HasInput()) fSink->CatchUp();
}

void DecodeRun::TellFailure(const FileMessage& message) const {
  const Failure failure = Diagnose(fDecoder.Decoder(), ByteSpan{message.bytes, message.length});
  PrintLine(fReader.Name() + ": message " + std::to_string(message.Number()) + " at byte " +
            std::to_string(message.offset) + " failed at its " + ExplainFailure(failure));
}

bool DecodeRun::IsWanted(const FileMessage& message) const {
  return fOptions.from <= message.Number() && message.Number() <= fOptions.to;
}

bool DecodeRun::WantsProgressBar() const {
  return !fOptions.quiet && !IsTerminal(fOptions.output.path);
}

void DecodeRun::RequireRange(Result end) const {
  if (fOptions.from <= fReader.MessageCount()) return;
  throw ToolError(
      "--from " + std::to_string(fOptions.from) + ": " + fReader.Name() + " has only " +
      Counted(fReader.MessageCount(), end == Result::kCutOff ? "whole message" : "message"));
}

ExitStatus DecodeRun::Conclude(Result end) const {
  if (end == Result::kEnd && fOptions.WritesPictures() && fPicturesWritten == 0) {
    PrintLine(fReader.Name() + ": no picture was written (" +
              Counted(fReader.MessageCount(), "message") + " read)");
  }
  const bool failuresCount = fOptions.verify.empty() && fFailures > 0;
  return failuresCount || end == Result::kCutOff ? kExitDamagedInput : kExitSuccess;
}

}  // namespace

int RunDecode(const DecodeOptions& options) {
  ProtectInput(options.input);
  if (options.WritesPictures()) RefuseTerminal(options.output.path);
  return DecodeRun(options).Run();
}

}  // namespace zlibvideo
