#include "tools/decode/RunDecode.h"

#include <memory>
#include <string>
#include <utility>

#include "bitstream/StandaloneFinder.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/stream/Diagnosis.h"
#include "tools/stream/MessageFile.h"
#include "tools/stream/StreamDecoder.h"
#include "tools/terminal/StandardError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

using Result = MessageFileReader::Result;

/// Prints a line for each message that fails, but not thousands of lines for a file that is damaged
/// from some place on: messages in a row that fail for the same reason share a line, as the empty
/// messages of zeros do, and a row of failures has at most 20 lines.
class FailureLines {
 public:
  explicit FailureLines(std::string name) : fName(std::move(name)) {}

  void Add(const FileMessage& message, const std::string& reason);
  /// Prints the line that waits for more messages with the same reason.
  void Print();
  /// Ends a row: a message was decoded, or the stream ends.
  void EndRow();
  std::uint64_t Count() const { return fCount; }

 private:
  static constexpr int kMaxLines = 20;

  std::string fName;
  std::uint64_t fCount = 0;
  std::string fReason;
  /// The first message with this reason, as a line, and the number of all of them.
  std::string fLine;
  std::uint64_t fMessages = 0;
  int fLinesInRow = 0;
  std::uint64_t fNotPrinted = 0;
};

void FailureLines::Add(const FileMessage& message, const std::string& reason) {
  ++fCount;
  if (fMessages > 0 && reason != fReason) Print();
  if (fMessages++ > 0) return;
  fReason = reason;
  fLine = fName + ": message " + std::to_string(message.Number()) + " at byte " +
          std::to_string(message.offset) + ": " + reason;
}

void FailureLines::Print() {
  const std::uint64_t messages = std::exchange(fMessages, 0);
  if (messages == 0) return;
  if (fLinesInRow == kMaxLines) {
    fNotPrinted += messages;
    return;
  }
  ++fLinesInRow;
  if (messages > 1) fLine += "; so did the next " + Counted(messages - 1, "message");
  PrintLine(fLine);
}

void FailureLines::EndRow() {
  Print();
  if (fNotPrinted > 0) PrintLine(fName + ": " + Counted(fNotPrinted, "more message") + " failed");
  fNotPrinted = 0;
  fLinesInRow = 0;
}

std::unique_ptr<FrameSink> MakeSink(const DecodeOptions& options) {
  if (!options.verify.empty()) return MakeVerifySink(options.verify);
  return options.format->make(options.output);
}

/// One run over a message file.
class DecodeRun {
 public:
  explicit DecodeRun(const DecodeOptions& options)
      : fOptions(options),
        fReader(options.input),
        fSink(MakeSink(options)),
        fFailures(fReader.Name()) {}

  int Run();

 private:
  /// Goes to the last message from which the range can be decoded, if the input is a file.
  void SkipAhead();
  void TakeOne(const FileMessage& message, bool decoded);
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
  FailureLines fFailures;
  std::uint64_t fPicturesWritten = 0;
};

int DecodeRun::Run() {
  if (fOptions.from > 1 && fReader.FileSize()) SkipAhead();
  const StreamEnd end = DecodeMessages(
      &fReader, &fDecoder, fOptions.to, ShowsProgress(),
      [this](const FileMessage& message, bool decoded) { TakeOne(message, decoded); });
  if (fReader.MessageCount() == 0) throw ToolError(end.problem);
  fSink->CatchUp();
  fFailures.EndRow();
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
  if (decoded) {
    fFailures.EndRow();
    if (IsWanted(message)) {
      fSink->WritePicture(message.index, fDecoder.Frame());
      ++fPicturesWritten;
    }
  } else {
    fSink->CatchUp();  // errors with earlier pictures come first
    // A comparison expects the failures of its list, and reports the others itself.
    if (!IsComparison()) {
      const auto outline = MessageOutline::Read({message.bytes, message.length});
      fFailures.Add(message, ExplainFailure(Diagnose(fDecoder.Decoder(), outline)));
    }
    if (IsWanted(message)) fSink->NoteFailure(message.index, fDecoder.Frame());
  }
  if (fReader.HasInput()) return;
  // Whoever watches a stream as it is sent has everything before the next message.
  fSink->CatchUp();
  fFailures.Print();
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
  if (end == Result::kEnd && fOptions.WritesPictures() && fPicturesWritten == 0) {
    PrintLine(fReader.Name() + ": no picture was written (" + messages + " read)");
  } else if (ShowsProgress()) {
    const std::string& output = fOptions.output.path;
    PrintNote(IsComparison() ? messages + ", all as in " + InputName(fOptions.verify)
                             : (output.empty() ? fReader.Name() : OutputName(output)) + ": " +
                                   Counted(fPicturesWritten, "picture"));
  }
  return fFailures.Count() > 0 || end == Result::kCutOff ? kExitDamagedInput : kExitSuccess;
}

}  // namespace

int RunDecode(const DecodeOptions& options) {
  ProtectInput(options.input);
  if (options.WritesPictures()) RefuseTerminal(options.output.path);
  return DecodeRun(options).Run();
}

}  // namespace zlibvideo
