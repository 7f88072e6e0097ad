#include <CLI/CLI.hpp>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "tools/Commands.h"
#include "tools/record/RunRecord.h"
#include "tools/terminal/Options.h"
#include "tools/terminal/ParseNumber.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr const char* kRecordFooter = R"(
Examples:
  zlibvideo record frames/*.png -o out.zvm
  zlibvideo record frames/*.png -o out.zvm --codec 1 --block 32x32 --key-every 9
  zlibvideo record frames/*.png -o - --reduced | zlibvideo info -
  while sleep 0.1; do import -silent -window root png:-; done |
    zlibvideo record - -o screen.zvm
      Record the screen with ImageMagick; Ctrl-C ends the recording.
  zlibvideo decode in.zvm --format y4m -o - | zlibvideo record - -o out.zvm
      Record the pictures of another stream.

A stream of pictures is a single file or pipe, or "-" for standard input. Its
first bytes tell PNG from y4m. Raw pictures require --size:
  raw   pixels of all pictures, rows from the top, 4 bytes a pixel: blue, green,
        red, and a byte that is ignored
  y4m   YUV4MPEG2 as "decode" writes it: 4:4:4, progressive, limited-range
        BT.709, of 10 bits (C444p10), which keep every colour exactly, or of 8
        bits (C444), where most colours differ a little
  png   PNG files that follow each other, with opaque pixels; samples of 16 bits
        are reduced to 8. If the size changes, a key frame of that size follows

Each message is written as soon as its picture has come: to standard output, or
to FILE.part beside FILE, which gets its name at the end of the stream. Ctrl-C
(SIGINT, SIGTERM, SIGHUP) ends a pipe and drops an incomplete picture. A second
Ctrl-C stops at once and leaves FILE.part, which has all whole messages. If a
stream is cut off or has an error, FILE has all pictures before that.

In version 2, a block that changes is sent in its smallest form: direct, which
is complete, or primed, which refers to the pixels of its last direct form. A
direct form may be larger by the percentage of --renew: later forms then refer
to newer pixels, which makes most recordings smaller as a whole.
--reduced keeps the 128 most frequent colours of the last key frame exactly; all
other colours lose the low three bits of red, green and blue.
--passes 2 sends each picture in reduced colours first, and the differences from
its exact colours in a second pass of the same message. The result is lossless,
with --reduced as well.
--level 9 makes files 0.25 percent smaller in 2.4 times the time; --level 6
makes files 3 percent larger in 0.7 times the time.

Exit status: 0 recorded, also when Ctrl-C ended a pipe; 1 could not run, FILE is
as it was; 2 a stream of pictures was cut off or had an error, or writing
failed: FILE has the pictures before that.)";

/// The arguments before they are checked.
struct TypedArguments {
  RecordArguments arguments;
  /// Empty, or "WIDTHxHEIGHT" of raw pictures.
  std::string size;
  std::string block = SizeText(arguments.options.blockWidth, arguments.options.blockHeight);
  int version = 2;
};

/// Reads a block size "WIDTHxHEIGHT". Returns false for a size that no frame header can hold.
bool ParseBlockSize(const std::string& text, int* width, int* height) {
  constexpr int kStep = FrameHeader::kBlockSizeStep;
  return ParseSize(text, kStep, FrameHeader::kMaxBlockSize, width, height) && *width % kStep == 0 &&
         *height % kStep == 0;
}

/// Refuses the options of version 2.
void CheckVersionOptions(const CLI::App& command) {
  for (const char* option : {"--reduced", "--passes", "--renew"}) {
    if (command.count(option) > 0) throw CLI::ValidationError(option, "requires --codec 2");
  }
}

void Check(const CLI::App& command, TypedArguments* typed) {
  RecordArguments& arguments = typed->arguments;
  RecordOptions& options = arguments.options;
  if (arguments.output.empty()) {
    throw CLI::ValidationError("an output is required: -o FILE, or \"-o -\" for standard output");
  }
  if (typed->version == 1) {
    options.codecType = kCodecTypeVersion1;
    CheckVersionOptions(command);
  }
  if (!ParseBlockSize(typed->block, &options.blockWidth, &options.blockHeight)) {
    throw CLI::ValidationError("--block", '"' + typed->block +
                                              "\" is not a block size; use WIDTHxHEIGHT, each 16 "
                                              "to 256 in steps of 16");
  }
  if (typed->size.empty()) return;
  const std::vector<std::string>& inputs = arguments.inputs;
  if (inputs.front().ends_with(".png")) {
    throw CLI::ValidationError("--size", "is for raw pictures, not for PNG files");
  }
  if (inputs.size() > 1) {
    throw CLI::ValidationError("--size", "raw pictures must be a single input; cat joins files");
  }
  if (!ParseSize(typed->size, 1, FrameHeader::kMaxImageSize, &arguments.rawWidth,
                 &arguments.rawHeight)) {
    throw CLI::ValidationError("--size", '"' + typed->size +
                                             "\" is not a size of pictures; use WIDTHxHEIGHT, each "
                                             "1 to 4095");
  }
}

void AddOptions(CLI::App* command, TypedArguments* typed) {
  RecordArguments* const arguments = &typed->arguments;
  RecordOptions& options = arguments->options;
  command
      ->add_option("PICTURE", arguments->inputs,
                   "PNG files of one size, in order; or a stream of\npictures, \"-\" for stdin")
      ->check(FileNameValidator())
      ->required()
      ->type_name("");
  command->add_option("-o,--output", arguments->output, "Message file to write, \"-\" for stdout")
      ->check(FileNameValidator())
      ->type_name("FILE");
  command
      ->add_option("--size", typed->size,
                   "The stream is raw pictures of this size, each side\n1 to 4095 pixels")
      ->type_name("WxH");
  command->add_option("--codec", typed->version, "Version of the stream: 1 (codec type 3) or 2 (6)")
      ->check(RangeValidator(1, 2))
      ->type_name("VERSION")
      ->capture_default_str();
  command->add_option("--block", typed->block, "Block size in pixels, 16 to 256 in steps of 16")
      ->type_name("WxH")
      ->capture_default_str();
  command
      ->add_option("--key-every", options.keyEvery,
                   "Make every N-th picture a key frame, at which\nplayers and decode --from can "
                   "begin; by default\nthe first alone")
      ->check(RangeValidator(1, std::numeric_limits<int>::max()))
      ->type_name("N");
  command->add_flag("--reduced", options.reduced, "Reduce colours (version 2)");
  command->add_option("--passes", options.passes, "Passes in a message, 1 or 2 (version 2)")
      ->check(RangeValidator(1, 2))
      ->type_name("N")
      ->capture_default_str();
  command
      ->add_option("--renew", options.renewPercent,
                   "Prefer direct forms up to PERCENT % larger,\n0 to 1000 (version 2)")
      ->check(RangeValidator(0, 1000))
      ->type_name("PERCENT")
      ->capture_default_str();
  command->add_option("--level", options.level, "zlib's compression level, 0 to 9")
      ->check(RangeValidator(0, 9))
      ->type_name("LEVEL")
      ->capture_default_str();
  AddJobsOption(command, "read and encode", &options.jobs);
  command->add_flag("-q,--quiet", arguments->quiet, "No progress bar, no line at the end");
}

}  // namespace

void AddRecordCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("record", "Make a stream from pictures");
  command->footer(kRecordFooter);
  // The command outlives this call, and so must its arguments.
  auto typed = std::make_shared<TypedArguments>();
  AddOptions(command, typed.get());
  command->callback([command, typed, exitStatus] {
    Check(*command, typed.get());
    *exitStatus = RunRecord(typed->arguments);
  });
}

}  // namespace zlibvideo
