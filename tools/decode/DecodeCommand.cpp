#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <string>

#include "tools/Commands.h"
#include "tools/cli/InputFile.h"
#include "tools/cli/Options.h"
#include "tools/decode/DecodeOptions.h"
#include "tools/decode/NamePattern.h"
#include "tools/decode/RunDecode.h"

namespace zlibvideo {
namespace {

constexpr const char* kFooter = R"(
Examples:
  zlibvideo decode movie.zvm -o pictures/%04d.png
      Write pictures/0001.png and so on, one for each message that is decoded;
      the number is that of the message, from 1. The folder is created.
  zlibvideo decode movie.zvm -o one.png --from 12 --to 12
      Write the picture of message 12 alone; all messages up to it are decoded.
  zlibvideo decode movie.zvm -o movie.webp --fps 5
      Write a lossless animation that web browsers show.
  zlibvideo decode - --format y4m -o - < movie.zvm | player -
      Convert from standard input to standard output.
  zlibvideo decode movie.zvm --format hash > movie.hashes
  zlibvideo decode movie.zvm --verify movie.hashes
      List what every message decodes to; later, check that it still does.

Formats, by default as the extension of the output says:
  png    a PNG file for each picture (with "-o -" one after another)
  bgra   raw pixels of all pictures, rows from the top, 4 bytes a pixel: blue,
         green, red, opacity (.bgra, .raw)
  hash   a line for each message: INDEX STATUS WIDTHxHEIGHT CRC32. The index is
         from 0; the status is 1, or 0 for a failed message; the CRC-32 is that
         of the picture's bytes in format bgra (.hash, .hashes)
  webp   one lossless animated WebP file, assembled in memory
  y4m    one YUV4MPEG2 file, 4:4:4, limited-range BT.709, 10-bit samples, from
         which every colour can be restored exactly
  null   nothing, for timing
A webp or y4m file has pictures of one size. Where the stream changes its size,
another file begins: movie-2.webp after movie.webp.

A message that fails is reported on standard error, with its index from 0 and
its place in the file, and decoding goes on with the next. With --verify, one
that fails as listed is not a fault.

Exit status: 0 all decoded; 1 could not run, or there is no whole message, or
the range begins after the last one; 2 some messages failed or the file is cut
off; 3 a difference from the --verify file.)";

constexpr const char* kOutputHelp =
    R"(Output file, "-" for stdout. For png a name with a
number in it (%04d.png), an existing folder, or a
plain name for one picture; not used with null)";

/// What is typed, before it is checked.
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
  return !path.empty() && (path.back() == '/' || std::filesystem::is_directory(path, ignored));
}

void ChooseFormat(Arguments* arguments) {
  DecodeOptions& options = arguments->options;
  if (!arguments->format.empty()) {
    options.format = FormatByName(arguments->format).value();
    return;
  }
  if (options.output.empty()) {
    throw CLI::ValidationError(
        "an output is required: -o FILE, --format hash, --format null or --verify FILE");
  }
  if (IsFolder(options.output)) {
    options.format = OutputFormat::kPng;
    return;
  }
  const auto format = FormatByExtension(options.output);
  if (!format.has_value()) {
    throw Unfit("-o", options.output,
                "has no extension that names a format; add --format " + FormatNames());
  }
  options.format = *format;
}

/// In formats other than png a percent sign is like any other character, unless a number was meant.
void CheckName(const std::string& output, OutputFormat format) {
  NamePattern pattern;
  std::string problem;
  const bool valid = NamePattern::Parse(output, &pattern, &problem);
  if (format == OutputFormat::kPng) {
    if (!valid) throw Unfit("-o", output, problem);
  } else if (valid && pattern.HasNumber()) {
    throw Unfit("-o", output,
                "has a picture number, which only png supports; give the name of one file");
  }
}

/// The pictures of a folder, as a `NamePattern`.
std::string PatternIn(const std::string& folder) {
  std::string escaped;
  for (const char c : folder) escaped += c == '%' ? "%%" : std::string(1, c);
  return (std::filesystem::path(escaped) / "%04d.png").string();
}

void CheckOutput(DecodeOptions* options) {
  if (options->format == OutputFormat::kNull) {
    if (options->output.empty()) return;
    throw Unfit("-o", options->output, "cannot be used: format null writes no file");
  }
  if (options->output.empty()) {
    if (options->format != OutputFormat::kHash) {
      throw CLI::ValidationError("-o FILE is required, or \"-o -\" for standard output");
    }
    options->output = kStandardStreamName;
  }
  if (options->format == OutputFormat::kPng && IsFolder(options->output)) {
    options->output = PatternIn(options->output);
  }
  CheckName(options->output, options->format);
}

void CheckMovieOptions(const Arguments& arguments) {
  const OutputFormat format = arguments.options.format;
  const bool isY4m = format == OutputFormat::kY4m;
  if (!arguments.frameRate.empty() && !isY4m && format != OutputFormat::kWebp) {
    throw Unfit("--fps", arguments.frameRate, "applies only to webp and y4m");
  }
  if (arguments.options.y4m8Bit && !isY4m) {
    throw CLI::ValidationError("--y4m-8bit", "applies only to y4m");
  }
}

void Check(Arguments* arguments) {
  DecodeOptions& options = arguments->options;
  if (options.from > options.to) {
    throw CLI::ValidationError(
        "--from", std::to_string(options.from) + " is after --to " + std::to_string(options.to));
  }
  if (!arguments->frameRate.empty() &&
      !FrameRate::Parse(arguments->frameRate, &options.frameRate)) {
    throw Unfit("--fps", arguments->frameRate,
                "is not a frame rate from 0.1 to 1000, such as 10, 29.97 or 30000/1001");
  }
  if (options.verify.empty()) {
    ChooseFormat(arguments);
    CheckOutput(&options);
  } else if (options.verify == kStandardStreamName && options.input == kStandardStreamName) {
    throw Unfit("--verify", options.verify, "is already used for the message file");
  }
  CheckMovieOptions(*arguments);
}

CLI::Validator FormatValidator() {
  return CLI::Validator(
      [](std::string& value) {
        return FormatByName(value).has_value() ? std::string()
                                               : "\"" + value + "\" is not one of " + FormatNames();
      },
      "", "format");
}

void AddOutputOptions(CLI::App* command, Arguments* arguments) {
  DecodeOptions& options = arguments->options;
  CLI::Option* output = command->add_option("-o,--output", options.output, kOutputHelp)
                            ->type_name("FILE")
                            ->check(FileNameValidator());
  CLI::Option* format = command->add_option("--format", arguments->format, "Format of the output")
                            ->type_name(FormatNames())
                            ->check(FormatValidator());
  command->add_option("--fps", arguments->frameRate, "Pictures a second in webp and y4m")
      ->type_name("RATE")
      ->default_str("10");
  command->add_flag("--y4m-8bit", options.y4m8Bit,
                    "8-bit samples in y4m, for more players; colours\nare not exact");
  CLI::Option* from = command->add_option("--from", options.from, "First message to write, from 1")
                          ->type_name("N")
                          ->check(RangeValidator(1));
  CLI::Option* to = command->add_option("--to", options.to, "Last message to write, included")
                        ->type_name("M")
                        ->check(RangeValidator(1));
  command->add_option("--verify", options.verify, "Compare with the lines of --format hash")
      ->type_name("FILE")
      ->check(FileNameValidator())
      ->excludes(output, format, from, to);
}

}  // namespace

void AddDecodeCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("decode", "Decode a message file into pictures");
  command->footer(kFooter);
  const auto arguments = std::make_shared<Arguments>();
  command->add_option("IN.zvm", arguments->options.input, "Message file, \"-\" for stdin")
      ->type_name("")
      ->check(FileNameValidator())
      ->required();
  AddOutputOptions(command, arguments.get());
  command->add_flag("-q,--quiet", arguments->options.quiet, "No progress bar");
  command->callback([arguments, exitStatus] {
    Check(arguments.get());
    *exitStatus = RunDecode(arguments->options);
  });
}

}  // namespace zlibvideo
