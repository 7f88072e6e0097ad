#include <string.h>

#include <CLI/CLI.hpp>
#include <algorithm>
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
#include "tools/terminal/PrintLine.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr const char* kFooter = R"(
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
  y4m   YUV4MPEG2 as "decode" writes it: 4:4:4 of 10 bits (C444p10), progressive,
        limited-range BT.709, which keeps every colour exactly; or of 8 bits
        (C444), where most colours differ a little
  png   PNG files that follow each other, with opaque pixels; samples of 16 bits
        are reduced to 8. If the size changes, a key frame of the new size follows

Each message is written as soon as its picture has come: to standard output, or
to FILE.part beside FILE, which gets its name at the end of the stream. Ctrl-C
(SIGINT, SIGTERM, SIGHUP) is the end of a pipe; an incomplete picture is dropped.
A second Ctrl-C stops at once and leaves FILE.part, which has all whole messages.
If a stream is cut off or has an error, FILE has all pictures before that.

Sizes and times, measured on 91 pictures of a desktop of 1280x720: kB a picture,
and the time to record and to decode it as a multiple of the time without options
                    kB  record  decode
  (no options)    40.1    1.0     1.0   lossless; a player can begin at the first
                                        picture alone
  --key-every 15  43.4    1.0     1.1   and here at every 15th
  --codec 1       53.2    0.7     1.2   for decoders of version 1
  --level 6       41.3    0.7     1.1   for more pictures a second
  --level 9       40.0    2.4     1.0   for the last few bytes
  --block 64x64   45.6    1.1     1.1   smaller blocks
  --passes 2      64.8    2.1     1.6   a picture of reduced colours comes first
  --reduced       24.1    1.1     0.7   not lossless
Without options, two cores took 15 milliseconds a picture.

A block that does not change takes two bytes. In version 2 a block that changes
is sent in the smallest of these forms:
  direct   a complete zlib stream of its pixels; key frames have no other form
  primed   a deflate stream that refers to the pixels of its last direct form,
           of all rows or of the band of rows that differ
and, with --reduced or --passes 2, in the colour-reduced kind of each. A direct
form may be larger by the percentage of --renew: later forms then refer to newer
pixels, which makes most recordings smaller as a whole.

--reduced keeps the 128 most frequent colours of the last key frame exactly; all
other colours lose the low three bits of red, green and blue.
--passes 2 sends each picture in reduced colours first, and the differences from
its exact colours in a second pass of the same message. The result is lossless,
with --reduced as well.

Exit status: 0 recorded, also when Ctrl-C ended a pipe; 1 could not run, FILE is
as it was; 2 a stream of pictures was cut off or had an error, or writing failed:
FILE has the pictures before that.)";

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

/// Reads a block size "WIDTHxHEIGHT". Returns false for a size that no frame header can hold.
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

/// Refuses the options of version 2.
void CheckVersionOptions(const CLI::App& command) {
  for (const char* option : {"--reduced", "--passes", "--renew"}) {
    if (command.count(option) > 0) throw CLI::ValidationError(option, "requires --codec 2");
  }
}

void ReadPictureSize(RecordArguments* arguments) {
  if (arguments->size.empty()) return;
  PictureInputs& inputs = arguments->inputs;
  if (inputs.AreNamedAsPng()) {
    throw CLI::ValidationError("--size",
                               "is for a single input of raw pictures, not for PNG files");
  }
  static_cast<void>(ParsePictureSize(arguments->size, &inputs.rawWidth, &inputs.rawHeight));
}

/// A shell sorts 1.png, 10.png, 2.png.
void NoteOrder(const std::vector<std::string>& paths) {
  const auto isAlphabetical = [](const std::string& a, const std::string& b) {
    return a < b && strverscmp(a.c_str(), b.c_str()) > 0;
  };
  const auto place = std::adjacent_find(paths.begin(), paths.end(), isAlphabetical);
  if (place == paths.end()) return;
  PrintLine("note: " + place[0] + " is recorded before " + place[1] +
            "; for the order of numbers, use names with leading zeros (decode -o %04d.png), or "
            "$(ls -v FILES)");
}

int Record(const CLI::App& command, RecordArguments arguments) {
  if (arguments.output.empty()) {
    throw CLI::ValidationError("an output is required: -o FILE, or \"-o -\" for standard output");
  }
  RecordOptions& options = arguments.options;
  if (arguments.version == 1) {
    options.codecType = kCodecTypeVersion1;
    CheckVersionOptions(command);
  }
  static_cast<void>(ParseBlockSize(arguments.block, &options.blockWidth, &options.blockHeight));
  ReadPictureSize(&arguments);
  for (const std::string& path : arguments.inputs.paths) ProtectInput(path);
  RefuseTerminal(arguments.output);
  NoteOrder(arguments.inputs.paths);
  MessageFileWriter writer(arguments.output);
  const std::unique_ptr<PictureSource> source = OpenPictures(arguments.inputs, options.jobs);
  RecordPictures(source.get(), options, !arguments.quiet && HasRoomForProgress(arguments.output),
                 &writer);
  return kExitSuccess;
}

void AddOptions(CLI::App* command, RecordArguments* arguments) {
  RecordOptions& options = arguments->options;
  command
      ->add_option("PICTURE", arguments->inputs.paths,
                   "PNG files of one size, in order; or a stream of\npictures, \"-\" for stdin")
      ->check(FileNameValidator())
      ->required()
      ->type_name("");
  command->add_option("-o,--output", arguments->output, "Message file to write, \"-\" for stdout")
      ->check(FileNameValidator())
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
  command->add_flag("-q,--quiet", arguments->quiet, "No progress bar, no line at the end");
}

}  // namespace

void AddRecordCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("record", "Make a stream from pictures");
  command->footer(kFooter);
  // The command outlives this call, and so must its arguments.
  auto arguments = std::make_shared<RecordArguments>();
  AddOptions(command, arguments.get());
  command->callback(
      [command, arguments, exitStatus] { *exitStatus = Record(*command, *arguments); });
}

}  // namespace zlibvideo
