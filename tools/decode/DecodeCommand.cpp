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
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr const char* kExamples = R"(
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
)";

constexpr const char* kFooterEnd = R"(
A message that fails is reported on standard error, with its number and its
place in the file, and decoding goes on with the next. With --verify, one
that fails as listed is not a fault.

Exit status: 0 all decoded; 1 could not run, or there is no whole message, or
the range begins after the last one; 2 some messages failed or the file is cut
off; 3 a difference from the --verify file.)";

using Files = OutputFormat::Files;

/// The names of those formats that `wanted` picks, each after `prefix`, with `separator` between.
template <typename Wanted>
std::string Names(const std::string& separator, Wanted wanted, const std::string& prefix = "") {
  std::string names;
  for (const OutputFormat& format : OutputFormats()) {
    if (!wanted(format)) continue;
    names += (names.empty() ? "" : separator) + prefix + format.name;
  }
  return names;
}

std::string AllNames() {
  return Names("|", [](const OutputFormat& /*format*/) { return true; });
}

std::string NamesWith(Files files) {
  return Names(" or ", [files](const OutputFormat& format) { return format.files == files; });
}

std::string NamesWithFrameRate() {
  return Names(" and ", [](const OutputFormat& format) { return format.hasFrameRate; });
}

/// What help says of a format, below the others.
std::string Explain(const OutputFormat& format) {
  constexpr std::size_t kNameWidth = 7;
  constexpr const char* kLineStart = "\n         ";
  const std::string text = "\n  " + AlignLeft(format.name, kNameWidth) +
                           CLI::detail::find_and_replace(format.help, "\n", kLineStart);
  if (format.otherExtension == nullptr) return text;
  return text + " (." + format.name + ", ." + format.otherExtension + ")";
}

std::string Footer() {
  std::string text = kExamples;
  text += "\nFormats, by default as the extension of the output says:";
  for (const OutputFormat& format : OutputFormats()) text += Explain(format);
  text += "\nA " + NamesWith(Files::kOnePerSize) +
          " file has pictures of one size. Where the stream changes its size,\n"
          "another file begins: movie-2.webp after movie.webp.\n";
  return text + kFooterEnd;
}

std::string OutputHelp() {
  return "Output file, \"-\" for stdout. For " + NamesWith(Files::kOnePerPicture) +
         " a name with a\nnumber in it (%04d.png), an existing folder, or a\n"
         "plain name for one picture; not used with " +
         NamesWith(Files::kNone);
}

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
  const std::string& output = options.output.path;
  if (!arguments->format.empty()) {
    options.format = FormatByName(arguments->format);
    return;
  }
  if (output.empty()) {
    const auto withoutFile = [](const OutputFormat& format) { return !format.WritesPictures(); };
    throw CLI::ValidationError("an output is required: -o FILE, " +
                               Names(", ", withoutFile, "--format ") + " or --verify FILE");
  }
  options.format = IsFolder(output) ? FormatByName("png") : FormatByExtension(output);
  if (options.format == nullptr) {
    throw Unfit("-o", output, "has no extension that names a format; add --format " + AllNames());
  }
}

/// In a name that no picture's number belongs to, a percent sign is like any other character,
/// unless a number was meant.
void CheckName(const std::string& output, const OutputFormat& format) {
  NamePattern pattern;
  std::string problem;
  const bool valid = NamePattern::Parse(output, &pattern, &problem);
  if (format.files == Files::kOnePerPicture) {
    if (!valid) throw Unfit("-o", output, problem);
  } else if (valid && pattern.HasNumber()) {
    throw Unfit("-o", output,
                "has a picture number, which only " + NamesWith(Files::kOnePerPicture) +
                    " supports; give the name of one file");
  }
}

/// The pictures of a folder, as a `NamePattern`.
std::string PatternIn(const std::string& folder, const std::string& extension) {
  std::string escaped;
  for (const char c : folder) escaped += c == '%' ? "%%" : std::string(1, c);
  return (std::filesystem::path(escaped) / ("%04d." + extension)).string();
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
    *output = PatternIn(*output, format.name);
  }
  CheckName(*output, format);
}

void CheckMovieOptions(const Arguments& arguments) {
  const OutputFormat* const format = arguments.options.format;
  if (!arguments.frameRate.empty() && (format == nullptr || !format->hasFrameRate)) {
    throw Unfit("--fps", arguments.frameRate, "applies only to " + NamesWithFrameRate());
  }
  if (arguments.options.output.y4m8Bit && format != FormatByName("y4m")) {
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
      !FrameRate::Parse(arguments->frameRate, &options.output.frameRate)) {
    throw Unfit("--fps", arguments->frameRate,
                "is not a frame rate from 0.1 to 1000, such as 10, 29.97 or 30000/1001");
  }
  if (options.verify.empty()) {
    ChooseFormat(arguments);
    CheckOutput(*options.format, &options.output.path);
  } else if (options.verify == kStandardStreamName && options.input == kStandardStreamName) {
    throw Unfit("--verify", options.verify, "is already used for the message file");
  }
  CheckMovieOptions(*arguments);
}

CLI::Validator FormatValidator() {
  return CLI::Validator(
      [](std::string& value) {
        return FormatByName(value) != nullptr ? std::string()
                                              : "\"" + value + "\" is not one of " + AllNames();
      },
      "", "format");
}

void AddOutputOptions(CLI::App* command, Arguments* arguments) {
  DecodeOptions& options = arguments->options;
  CLI::Option* output = command->add_option("-o,--output", options.output.path, OutputHelp())
                            ->type_name("FILE")
                            ->check(FileNameValidator());
  CLI::Option* format = command->add_option("--format", arguments->format, "Format of the output")
                            ->type_name(AllNames())
                            ->check(FormatValidator());
  command->add_option("--fps", arguments->frameRate, "Pictures a second in " + NamesWithFrameRate())
      ->type_name("RATE")
      ->default_str("10");
  command->add_flag("--y4m-8bit", options.output.y4m8Bit,
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
  command->footer(Footer());
  const auto arguments = std::make_shared<Arguments>();
  command->add_option("IN.zvm", arguments->options.input, "Message file, \"-\" for stdin")
      ->type_name("")
      ->check(FileNameValidator())
      ->required();
  AddOutputOptions(command, arguments.get());
  AddJobsOption(command, "make PNG files", &arguments->options.output.jobs);
  command->add_flag("-q,--quiet", arguments->options.quiet, "No progress bar");
  command->callback([arguments, exitStatus] {
    Check(arguments.get());
    *exitStatus = RunDecode(arguments->options);
  });
}

}  // namespace zlibvideo
