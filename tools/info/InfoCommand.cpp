#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "tools/Commands.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/info/ReportWriter.h"
#include "tools/stream/FailureRun.h"
#include "tools/stream/MessageFile.h"
#include "tools/stream/StreamDecoder.h"
#include "tools/terminal/Options.h"
#include "tools/terminal/StandardError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr const char* kInfoFooter = R"(
Examples:
  zlibvideo info movie.zvm                  a table, a line for each message
  zlibvideo info movie.zvm --map            with a map of the blocks under each
  zlibvideo info movie.zvm --json | jq .    one JSON object for each message
  zlibvideo info movie.zvm --html out.html  a page with pictures to step through

Messages count from 1. "Block 3,7" is row 3 and column 7, counted from 0; row 0
is at the bottom of the picture, column 0 at its left edge.

Columns of the table:
  type     key, or the number of another frame type
  changed  blocks with a record that is not empty
  records  the number of records of each kind, by the letters of the map:
           D direct, P primed, B banded, X primed and banded, I intermediate; in
           lower case with reduced colours; ? colours that cannot be converted

In table and page, empty messages share a line, and so do the failures after 20
failures in a row.

Keys of a JSON object; a value is null where it does not apply:
  index, offset, bytes    which message, 0 for message 1; where it begins in the
                          file; its length
  decoded                 true or false
  frame_type, key_frame   0 to 15; whether it is a key frame
  codec_type              3 is version 1, 6 is version 2
  picture, block          width and height, in pixels
  grid                    columns and rows, in blocks
  flags                   version 2: the flags byte
  palette, palette_bytes  none, installed, empty, past end, unreadable, wrong
                          size; size of the compressed palette
  passes                  passes over the grid that were begun
  changed_blocks          blocks with a record that is not empty
  records                 for each kind: count and bytes of those decoded
  unread_bytes            bytes after the last record
  failure                 what is wrong; offset in the message, in bytes; pass
                          (from 1), row and column if a block is at fault

Exit status: 0 all decoded; 1 could not run, or there is no whole message;
2 some messages failed or the file is cut off.)";

constexpr std::uint64_t kBytesPerMebibyte = 1024 * 1024;

struct InfoOptions {
  std::string input;
  std::string html;
  /// MiB.
  std::uint64_t pictureLimit = 32;
  bool json = false;
  bool map = false;
  bool quiet = false;
};

std::unique_ptr<ReportWriter> MakeWriter(const InfoOptions& options) {
  if (!options.html.empty()) {
    return MakeHtmlReport(options.html, InputName(options.input),
                          options.pictureLimit * kBytesPerMebibyte);
  }
  if (options.json) return MakeJsonReport();
  return MakeTextReport(options.map);
}

using Result = MessageFileReader::Result;

/// A run over a message file.
class InfoRun {
 public:
  explicit InfoRun(const InfoOptions& options) : fOptions(options), fReader(options.input) {}

  int Run();

 private:
  void ReportOne(const FileMessage& message, bool decoded);
  void ReportHeldBack();
  bool WantsProgressBar() const;

  const InfoOptions& fOptions;
  MessageFileReader fReader;
  StreamDecoder fStream;
  /// Made for the first message: there is no report about an empty file.
  std::unique_ptr<ReportWriter> fWriter;
  FailureRun fFailures;
  StreamSummary fSummary;
};

int InfoRun::Run() {
  StreamEnd end = DecodeMessages(
      &fReader, &fStream, kToTheEnd, WantsProgressBar(),
      [this](const FileMessage& message, bool decoded) { ReportOne(message, decoded); });
  if (fSummary.messages == 0) throw ToolError(end.problem);
  if (end.result == Result::kEnd) end.problem.clear();
  // Completing the report may end with an error of its own.
  if (!end.problem.empty()) PrintLine(end.problem);
  ReportHeldBack();
  fWriter->Finish(fSummary, end.problem);
  if (!fOptions.html.empty() && fSummary.failed != 0) {
    PrintLine(fReader.Name() + ": " + std::to_string(fSummary.failed) + " of " +
              Counted(fSummary.messages, "message") + " failed; the page says why");
  }
  if (end.result == Result::kReadError) return kExitCouldNotRun;
  return fSummary.failed == 0 && end.problem.empty() ? kExitSuccess : kExitDamagedInput;
}

void InfoRun::ReportOne(const FileMessage& message, bool decoded) {
  if (fWriter == nullptr) fWriter = MakeWriter(fOptions);
  const MessageReport report = MessageReport::Gather(message, decoded, fStream.Decoder());
  // Programs read an object for every message.
  if (fOptions.json || !fFailures.HoldsBack(message, decoded)) {
    ReportHeldBack();
    fWriter->Write(report, fStream.Frame());
  }
  fSummary.Add(report);
}

void InfoRun::ReportHeldBack() {
  const std::string sentence = fFailures.TakeHeldBack();
  if (!sentence.empty()) fWriter->WriteHeldBack(sentence);
}

bool InfoRun::WantsProgressBar() const {
  return !fOptions.html.empty() && !fOptions.quiet && HasRoomForProgress(fOptions.html);
}

int RunInfo(const InfoOptions& options) {
  ProtectInput(options.input);
  return InfoRun(options).Run();
}

}  // namespace

void AddInfoCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("info", "Show what is inside a message file");
  command->footer(kInfoFooter);
  auto options = std::make_shared<InfoOptions>();
  command->add_option("IN.zvm", options->input, "Message file, \"-\" for stdin")
      ->type_name("")
      ->check(FileNameValidator())
      ->required();
  CLI::Option* json =
      command->add_flag("--json", options->json, "Print one JSON object for each message");
  CLI::Option* html =
      command->add_option("--html", options->html, "Write one web page, \"-\" for stdout")
          ->type_name("FILE")
          ->check(FileNameValidator())
          ->excludes(json);
  command->add_flag("--map", options->map, "Print a map of the blocks under each message")
      ->excludes(json)
      ->excludes(html);
  command
      ->add_option("--picture-limit", options->pictureLimit,
                   "Put pictures of at most this many MiB into the\npage, 0 to 1024")
      ->type_name("MIB")
      ->check(RangeValidator(0, 1024))
      ->capture_default_str()
      ->needs(html);
  command->add_flag("-q,--quiet", options->quiet, "No progress bar");
  command->callback([options, exitStatus] { *exitStatus = RunInfo(*options); });
}

}  // namespace zlibvideo
