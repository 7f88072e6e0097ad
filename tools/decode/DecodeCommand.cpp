#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <string>

#include "tools/Commands.h"
#include "tools/decode/RunDecode.h"
#include "tools/decode/formats/NamePattern.h"
#include "tools/decode/formats/OutputFormat.h"
#include "tools/files/InputFile.h"
#include "tools/terminal/Options.h"

namespace zlibvideo {
namespace {

constexpr const char* kDecodeFooter = R"(
Examples:
  zlibvideo decode movie.zvm -o pictures/%04d.png
      Write pictures/0001.png and so on, a file for each message that decodes,
      with the number of the message, from 1. The folder is created.
  zlibvideo decode movie.zvm -o one.png --from 12 --to 12
      Write the picture of message 12. Decoding begins at the last message up to
      it that stands alone, in a pipe at the first message.
  zlibvideo decode movie.zvm -o movie.webp --fps 5
      Write a lossless animation that web browsers show.
  zlibvideo decode movie.zvm --from 20 --to 30 --format y4m -o - |
    zlibvideo record - -o cut.zvm
      Cut a stream. To join streams: cat 1.zvm 2.zvm > both.zvm
  zlibvideo decode movie.zvm --format hash > movie.hashes
  zlibvideo decode movie.zvm --verify movie.hashes
      List the checksums of all pictures; later, check that they are the same.
  zlibvideo decode a.zvm --verify <(zlibvideo decode b.zvm --format hash)
      Compare the pictures of two streams.

Formats, by default chosen by the extension of the output:
  png    a PNG file for each picture (with "-o -" one after another)
  bgra   raw pixels of all pictures, rows from the top, 4 bytes a pixel: blue,
         green, red, opacity (.bgra, .raw)
  hash   a line for each message: INDEX STATUS WIDTHxHEIGHT CRC32. The index is
         from 0, for message 1; the status is 1, or 0 for a failed message; the
         CRC-32 is that of the picture's bytes in format bgra (.hash, .hashes)
  null   nothing, for timing
  webp   a lossless animated WebP file, assembled in memory
  y4m    a YUV4MPEG2 file, 4:4:4, limited-range BT.709, with samples of 10 bits,
         which keep every colour exactly
A bgra, webp or y4m file has pictures of one size. If the size changes, the file
ends there, and a line says how to decode the rest.

If a message fails, a line on standard error gives its number and its place in
the file, and decoding goes on with the next message. With --verify, a message
may fail if the list says so.

FILE is written as FILE.part, and has its own name when it is complete. Ctrl-C
(SIGINT, SIGTERM, SIGHUP) removes FILE.part; a second Ctrl-C leaves it.

Exit status: 0 all decoded; 1 could not run, or there is no whole message, or
the range begins after the last message; 2 some messages failed, the file is cut
off, or the size changes; 3 a difference from the --verify file.)";

constexpr const char* kFormatNames = "png|bgra|hash|null|webp|y4m";

using Files = OutputFormat::Files;

/// The arguments before they are checked.
struct Arguments {
  DecodeOptions options;
  std::string format;
  std::string frameRate;
};

/// A usage error that names the option, its value and what is expected.
CLI::ValidationError Unfit(const std::string& option, const std::string& value,
                           const std::string& expectation) {
  return CLI::ValidationError(option, "\"" + value + "\" " + expectation);
}

bool IsFolder(const std::string& path) {
  if (path == kStandardStreamName) return false;
  std::error_code ignored;
  return path.ends_with('/') || std::filesystem::is_directory(path, ignored);
}

/// The format that the name of `output` chooses. Throws if the name chooses no format.
const OutputFormat* FormatOfName(const std::string& output) {
  if (output.empty()) {
    throw CLI::ValidationError(
        "an output is required: -o FILE, --format hash, --format null or --verify FILE");
  }
  if (IsFolder(output)) return FindFormat("png");
  const std::string extension = std::filesystem::path(output).extension().string();
  if (extension.empty()) {
    const std::string folder =
        output == kStandardStreamName ? "" : ", or for a folder of PNG files write " + output + "/";
    throw Unfit("-o", output,
                "names no format; add --format " + std::string(kFormatNames) + folder);
  }
  const OutputFormat* const format = FindFormat(extension.substr(1));
  if (format != nullptr) return format;
  throw Unfit("-o", output,
              "has an extension that is not written; choose .png, .webp, .y4m, .bgra or .hash");
}

/// If a name has no place for a picture's number, a percent sign is like any other character,
/// unless a number was meant.
void CheckName(const std::string& output, const OutputFormat& format) {
  NamePattern pattern;
  const bool valid = NamePattern::Parse(output, &pattern);
  if (format.files == Files::kOnePerPicture) {
    if (!valid) throw Unfit("-o", output, NamePattern::kRule);
  } else if (valid && pattern.HasNumber()) {
    throw Unfit("-o", output,
                "has a picture number, which only png supports; give the name of a file");
  }
}

void CheckOutput(const OutputFormat& format, std::string* output) {
  if (format.files == Files::kNone) {
    if (output->empty()) return;
    throw Unfit("-o", *output,
                std::string("cannot be used: format ") + format.name + " writes no file");
  }
  if (output->empty()) {
    if (!format.isText) {
      throw CLI::ValidationError("-o FILE is required, or \"-o -\" for standard output");
    }
    *output = kStandardStreamName;
  }
  if (format.files == Files::kOnePerPicture && IsFolder(*output)) {
    *output = (std::filesystem::path(*output) / "%04d.png").string();
  }
  CheckName(*output, format);
}

void CheckMovieOptions(const Arguments& arguments) {
  const OutputFormat* const format = arguments.options.format;
  if (!arguments.frameRate.empty() && (format == nullptr || !format->hasFrameRate)) {
    throw Unfit("--fps", arguments.frameRate, "is only for webp and y4m");
  }
  if (arguments.options.output.y4m8Bit && format != FindFormat("y4m")) {
    throw CLI::ValidationError("--y4m-8bit", "is only for y4m");
  }
}

void Check(Arguments* arguments) {
  DecodeOptions& options = arguments->options;
  if (options.from > options.to) {
    throw CLI::ValidationError(
        "--from", std::to_string(options.from) + " is after --to " + std::to_string(options.to));
  }
  if (!arguments->frameRate.empty() &&
      !FrameRate::Parse(arguments->frameRate, &options.output.frameRate)) {
    throw Unfit("--fps", arguments->frameRate,
                "is not a frame rate from 0.1 to 1000, such as 10, 29.97 or 30000/1001");
  }
  std::string& output = options.output.path;
  if (options.verify.empty()) {
    options.format =
        arguments->format.empty() ? FormatOfName(output) : FindFormat(arguments->format);
    CheckOutput(*options.format, &output);
  } else if (!output.empty() || !arguments->format.empty() || options.from > 1 ||
             options.to < kToTheEnd) {
    throw CLI::ValidationError(
        "--verify",
        "compares all messages and writes none: leave out -o, --format, --from and --to");
  } else if (options.verify == kStandardStreamName && options.input == kStandardStreamName) {
    throw Unfit("--verify", options.verify, "is standard input, which is the message file already");
  }
  CheckMovieOptions(*arguments);
}

void AddOutputOptions(CLI::App* command, Arguments* arguments) {
  DecodeOptions& options = arguments->options;
  command
      ->add_option("-o,--output", options.output.path,
                   "Output file, \"-\" for stdout. For png a name with a\n"
                   "number in it (%04d.png), an existing folder, or a\n"
                   "plain name for one picture; not used with null")
      ->type_name("FILE")
      ->check(FileNameValidator());
  command->add_option("--format", arguments->format, "Format of the output")
      ->type_name(kFormatNames)
      ->check(CLI::IsMember(CLI::detail::split(kFormatNames, '|')).description(""));
  command->add_option("--fps", arguments->frameRate, "Pictures a second in webp and y4m")
      ->type_name("RATE")
      ->default_str("10");
  command->add_flag("--y4m-8bit", options.output.y4m8Bit,
                    "8-bit samples in y4m, for more players; colours\nare not exact");
  command->add_option("--from", options.from, "First message to write, from 1")
      ->type_name("N")
      ->check(RangeValidator(1));
  command->add_option("--to", options.to, "Last message to write, included")
      ->type_name("M")
      ->check(RangeValidator(1));
  command->add_option("--verify", options.verify, "Compare with a list of --format hash")
      ->type_name("FILE")
      ->check(FileNameValidator());
}

}  // namespace

void AddDecodeCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("decode", "Decode a message file into pictures");
  command->footer(kDecodeFooter);
  const auto arguments = std::make_shared<Arguments>();
  command->add_option("IN.zvm", arguments->options.input, "Message file, \"-\" for stdin")
      ->type_name("")
      ->check(FileNameValidator())
      ->required();
  AddOutputOptions(command, arguments.get());
  AddJobsOption(command, "make PNG files", &arguments->options.output.jobs);
  command->add_flag("-q,--quiet", arguments->options.quiet, "No progress bar, no line at the end");
  command->callback([arguments, exitStatus] {
    Check(arguments.get());
    *exitStatus = RunDecode(arguments->options);
  });
}

}  // namespace zlibvideo
