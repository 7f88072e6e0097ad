#include <CLI/CLI.hpp>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "tools/Commands.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/PictureSource.h"
#include "tools/record/OpenPictures.h"
#include "tools/record/RecordOptions.h"
#include "tools/record/RecordPictures.h"
#include "tools/stream/MessageFile.h"
#include "tools/terminal/Options.h"
#include "tools/terminal/ParseNumber.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr const char* kFooter = R"(
Examples:
  zlibvideo record frames/*.png -o out.zvm
  zlibvideo record frames/*.png -o out.zvm --codec 1 --block 32x32 --key-every 9
  zlibvideo record frames/*.png -o - --reduced | zlibvideo info -
  grabber | zlibvideo record - --size 1280x720 -o out.zvm
      Record raw pictures as they come; Ctrl-C ends the recording.
  zlibvideo decode in.zvm --format y4m -o - | zlibvideo record - -o out.zvm
      Record the pictures of another stream.

A stream of pictures is one file or pipe by its name, or "-". Its first bytes
tell PNG from y4m; raw pictures are known by --size alone:
  raw   pixels of all pictures, rows from the top, 4 bytes a pixel: blue, green,
        red, and one that is ignored
  y4m   YUV4MPEG2 as "decode" writes it: 4:4:4 of 10 bits (C444p10), progressive,
        of limited range, taken for BT.709, from which every colour is restored
        exactly; or of 8 bits (C444), where most colours come out a little off
  png   PNG files one after another; all pixels have to be opaque, and samples
        of 16 bits are brought to 8
Each message is written as soon as its picture is there: at once with "-o -",
else to a hidden file beside FILE, which gets its name when the stream ends. On
Ctrl-C (SIGINT, SIGTERM, SIGHUP) a pipe ends there, without a picture of which a
part has come; Ctrl-C again, later than half a second, drops the recording. When
a stream is cut off or has an error, FILE has all pictures before that.

What choices cost and bring, measured on 91 pictures of a desktop of 1280x720:
KB a picture, and the time to record and to decode it beside that of no options
                    KB  record  decode
  (no options)    40.1    1.0     1.0   lossless; a player can begin at the first
                                        picture alone
  --key-every 15  43.4    1.0     1.1   and here at every 15th
  --codec 1       53.2    0.7     1.2   for decoders of version 1
  --level 6       41.3    0.7     1.1   for more pictures a second
  --level 9       40.0    2.4     1.0   for the last few bytes
  --block 64x64   45.6    1.1     1.1   smaller blocks
  --passes 2      64.8    2.1     1.6   a picture of reduced colours comes first
  --reduced       24.1    1.1     0.7   not lossless
On two cores, no options took 15 milliseconds a picture.

A block that does not change takes two bytes. In version 2 a block that changes
is sent in the smallest of these forms:
  direct   a complete zlib stream of its pixels; key frames have only these
  primed   a deflate stream that refers to the pixels of its last direct form,
           of all rows or a band of those that differ from these
and, with --reduced or --passes 2, in the colour-reduced kind of each. A direct
form is taken even if it is larger by the percentage of --renew: later forms
then refer to newer pixels, which makes most recordings smaller as a whole.

--reduced shows the 128 most frequent colours of the last key frame as they are;
all others lose the low three bits of red, green and blue.
--passes 2 sends each picture in reduced colours first and what is missing to
its exact colours in a second pass of the same message: the result is lossless,
with --reduced as well.

Exit status: 0 recorded, also when Ctrl-C ended a pipe; 1 could not run, FILE is
left as it was; 2 a stream of pictures was cut off or had an error, or FILE could
not take more: it has what came before.)";

struct RecordArguments {
  PictureInputs inputs;
  /// Empty, or "WIDTHxHEIGHT" of raw pictures.
  std::string size;
  std::string output;
  RecordOptions options;
  std::string block = SizeText(options.blockWidth, options.blockHeight);
  int version = 2;
  bool quiet = false;
};

/// Reads a block size "WIDTHxHEIGHT". False when it is not one that a frame header can hold.
bool ParseBlockSize(const std::string& text, int* width, int* height) {
  constexpr int kStep = FrameHeader::kBlockSizeStep;
  return ParseSize(text, kStep, FrameHeader::kMaxBlockSize, width, height) && *width % kStep == 0 &&
         *height % kStep == 0;
}

std::string CheckBlockSize(const std::string& text) {
  int width = 0;
  int height = 0;
  if (ParseBlockSize(text, &width, &height)) return {};
  return "\"" + text + "\" is not a block size; use WIDTHxHEIGHT, each 16 to 256 in steps of 16";
}

bool ParsePictureSize(const std::string& text, int* width, int* height) {
  return ParseSize(text, 1, FrameHeader::kMaxImageSize, width, height);
}

std::string CheckPictureSize(const std::string& text) {
  int width = 0;
  int height = 0;
  if (ParsePictureSize(text, &width, &height)) return {};
  return "\"" + text + "\" is not a size of pictures; use WIDTHxHEIGHT, each 1 to " +
         std::to_string(FrameHeader::kMaxImageSize);
}

std::string CheckVersion(const std::string& text) {
  if (text == "1" || text == "2") return {};
  return "\"" + text + "\" is not a version; use 1 (codec type 3) or 2 (codec type 6)";
}

/// Refuses what only version 2 has.
void CheckVersionOptions(const CLI::App& command) {
  for (const char* option : {"--reduced", "--passes", "--renew"}) {
    if (command.count(option) > 0) throw CLI::ValidationError(option, "needs --codec 2");
  }
}

void ReadPictureSize(RecordArguments* arguments) {
  if (arguments->size.empty()) return;
  PictureInputs& inputs = arguments->inputs;
  if (inputs.AreNamedAsPng()) {
    throw CLI::ValidationError("--size", "is for one input of raw pictures, not for PNG files");
  }
  static_cast<void>(ParsePictureSize(arguments->size, &inputs.rawWidth, &inputs.rawHeight));
}

int Record(const CLI::App& command, RecordArguments arguments) {
  RecordOptions& options = arguments.options;
  if (arguments.version == 1) {
    options.codecType = kCodecTypeVersion1;
    CheckVersionOptions(command);
  }
  static_cast<void>(ParseBlockSize(arguments.block, &options.blockWidth, &options.blockHeight));
  ReadPictureSize(&arguments);
  for (const std::string& path : arguments.inputs.paths) ProtectInput(path);
  RefuseTerminal(arguments.output);
  MessageFileWriter writer(arguments.output);
  const std::unique_ptr<PictureSource> source = OpenPictures(arguments.inputs, options.jobs);
  RecordPictures(source.get(), options, !arguments.quiet, &writer);
  return kExitSuccess;
}

void AddOptions(CLI::App* command, RecordArguments* arguments) {
  RecordOptions& options = arguments->options;
  command
      ->add_option("PICTURE", arguments->inputs.paths,
                   "PNG files of one size, in order; or one stream of\npictures, \"-\" for stdin")
      ->check(FileNameValidator())
      ->required()
      ->type_name("");
  command->add_option("-o,--output", arguments->output, "Message file to write, \"-\" for stdout")
      ->check(FileNameValidator())
      ->required()
      ->type_name("FILE");
  command
      ->add_option("--size", arguments->size,
                   "The stream is raw pictures of this size, each side\n1 to 4095 pixels")
      ->check(CheckPictureSize)
      ->type_name("WxH");
  command->add_option("--codec", arguments->version, "Version of the stream, 1 or 2")
      ->check(CheckVersion)
      ->type_name("VERSION")
      ->capture_default_str();
  command->add_option("--block", arguments->block, "Block size in pixels, 16 to 256 in steps of 16")
      ->check(CheckBlockSize)
      ->type_name("WxH")
      ->capture_default_str();
  command
      ->add_option("--key-every", options.keyEvery,
                   "Make every N-th picture a key frame; by default\nonly the first is one")
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
  command->add_flag("-q,--quiet", arguments->quiet, "No progress bar");
}

}  // namespace

void AddRecordCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("record", "Make a stream from pictures");
  command->footer(kFooter);
  // The command outlives this call, and what it stores its arguments in must live as long.
  auto arguments = std::make_shared<RecordArguments>();
  AddOptions(command, arguments.get());
  command->callback(
      [command, arguments, exitStatus] { *exitStatus = Record(*command, *arguments); });
}

}  // namespace zlibvideo
