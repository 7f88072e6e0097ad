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

/// Prints the failures of messages, but not thousands of lines for a file that is damaged from
/// some place on: empty messages in a row, as zeros are, make a single line, and so do all failures
/// in a row after the first 20.
class FailureLines {
 public:
  explicit FailureLines(std::string name) : fName(std::move(name)) {}

  void Add(const FileMessage& message, const std::string& explanation);
  /// Prints the lines that wait for the end of a row.
  void EndRow();
  std::uint64_t Count() const { return fCount; }

 private:
  static constexpr std::uint64_t kMaxLinesInRow = 20;

  void PrintEmpty();
  /// Prints `line`, which is about `messages` messages.
  void Print(const std::string& line, std::uint64_t messages = 1);

  std::string fName;
  std::uint64_t fCount = 0;
  std::uint64_t fLinesInRow = 0;
  std::uint64_t fNotPrinted = 0;
  /// Empty messages that were not printed yet: their count, the first of them and its line.
  std::uint64_t fEmptyCount = 0;
  FileMessage fFirstEmpty;
  std::string fEmptyLine;
};

void FailureLines::Add(const FileMessage& message, const std::string& explanation) {
  ++fCount;
  const std::string line = "message " + std::to_string(message.Number()) + " at byte " +
                           std::to_string(message.offset) + " failed at its " + explanation;
  if (message.length > 0) {
    PrintEmpty();
    Print(line);
  } else if (fEmptyCount++ == 0) {
    fFirstEmpty = message;
    fEmptyLine = line;
  }
}

void FailureLines::PrintEmpty() {
  if (fEmptyCount == 1) Print(fEmptyLine);
  if (fEmptyCount > 1) {
    Print("messages " + std::to_string(fFirstEmpty.Number()) + " to " +
              std::to_string(fFirstEmpty.index + fEmptyCount) + ", from byte " +
              std::to_string(fFirstEmpty.offset - kMessageLengthBytes) +
              " on, are empty: the file has only zeros there",
          fEmptyCount);
  }
  fEmptyCount = 0;
}

void FailureLines::Print(const std::string& line, std::uint64_t messages) {
  if (++fLinesInRow > kMaxLinesInRow) {
    fNotPrinted += messages;
  } else {
    PrintLine(fName + ": " + line);
  }
}

void FailureLines::EndRow() {
  PrintEmpty();
  if (fNotPrinted > 0) PrintLine(fName + ": " + Counted(fNotPrinted, "more message") + " failed");
  fNotPrinted = fLinesInRow = 0;
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

void DecodeRun::TakeOne(const FileMessage& message, bool decoded) {
  if (!decoded) {
    fSink->CatchUp();  // errors with earlier pictures come first
    // A comparison expects the failures of its list, and reports the others itself.
    if (!IsComparison()) {
      fFailures.Add(message, ExplainFailure(Diagnose(fDecoder.Decoder(),
                                                     ByteSpan{message.bytes, message.length})));
    }
    if (IsWanted(message)) fSink->NoteFailure(message.index, fDecoder.Frame());
    return;
  }
  fFailures.EndRow();
  if (!IsWanted(message)) return;
  fSink->WritePicture(message.index, fDecoder.Frame());
  ++fPicturesWritten;
  // Whoever watches a stream as it is sent has each picture before the next message.
  if (!fReader.HasInput()) fSink->CatchUp();
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
