#include <CLI/CLI.hpp>
#include <charconv>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "host/standin/StandInMessage.h"
#include "tools/Commands.h"
#include "tools/cli/InputFile.h"
#include "tools/cli/Options.h"
#include "tools/cli/OutputFile.h"
#include "tools/cli/ProgressBar.h"
#include "tools/cli/ToolError.h"
#include "tools/pictures/Png.h"
#include "tools/record/FrameEncoder.h"
#include "tools/record/RecordError.h"
#include "tools/record/RecordOptions.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {
namespace {

constexpr const char* kFooter = R"(
Examples:
  zlibvideo record frames/*.png -o out.zvm
  zlibvideo record frames/*.png -o out.zvm --codec 2 --block 32x32 --key-every 9
  zlibvideo record frames/*.png -o - --codec 2 --reduced | zlibvideo info -

Version 1 and version 2 are lossless unless --reduced is given: "decode" gives
back the same pictures. A block that does not change takes two bytes. In version
2 a block that changes is sent in the smallest of these forms:
  direct   a complete zlib stream of its pixels; key frames have only these
  primed   a deflate stream that refers to the pixels of its last direct form
  banded   only the rows that differ from its last direct form, primed or not
and, with --reduced or --passes 2, in the colour-reduced kinds of each.
--renew 10 takes a direct form that is up to 10 percent larger, too: later forms
then refer to newer pixels, which makes most recordings smaller as a whole.

--reduced shows the 128 most frequent colours of the last key frame as they are;
all others lose the low three bits of red, green and blue.
--passes 2 sends each picture in reduced colours first and what is missing to
its exact colours in a second pass of the same message: the result is lossless,
with --reduced as well.

Exit status: 0 recorded; 1 could not run, FILE is left as it was.)";

struct RecordArguments {
  std::vector<std::string> pictures;
  std::string output;
  std::string block = "64x64";
  int version = 1;
  bool quiet = false;
  RecordOptions options;
};

bool ParseBlockSide(const std::string& text, int* side) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, *side);
  return error == std::errc() && rest == end && *side >= FrameHeader::kBlockSizeStep &&
         *side <= FrameHeader::kMaxBlockSize && *side % FrameHeader::kBlockSizeStep == 0;
}

/// Reads a block size "WIDTHxHEIGHT". False when it is not one that a frame header can hold.
bool ParseBlockSize(const std::string& text, int* width, int* height) {
  const std::size_t cross = text.find('x');
  return cross != std::string::npos && ParseBlockSide(text.substr(0, cross), width) &&
         ParseBlockSide(text.substr(cross + 1), height);
}

std::string CheckBlockSize(const std::string& text) {
  int width = 0;
  int height = 0;
  if (ParseBlockSize(text, &width, &height)) return {};
  return "\"" + text + "\" is not a block size; use WIDTHxHEIGHT, each 16 to 256 in steps of 16";
}

std::string CheckVersion(const std::string& text) {
  if (text == "1" || text == "2") return {};
  return "\"" + text + "\" is not a version; use 1 (codec type 3) or 2 (codec type 6)";
}

/// Refuses what the writer would refuse, but by an error that will name the picture.
void CheckLength(std::size_t length) {
  if (length <= StandInMessage::kMaxLength) return;
  throw RecordError("its message takes " + std::to_string(length) + " bytes; the limit is " +
                    std::to_string(StandInMessage::kMaxLength));
}

void EncodeAll(const RecordArguments& arguments, MessageFileWriter* writer) {
  ProgressBar progress(!arguments.quiet, "picture", arguments.pictures.size());
  std::optional<FrameEncoder> encoder;
  std::uint64_t done = 0;
  for (const std::string& path : arguments.pictures) {
    try {
      const Picture picture = ReadPng(path);
      if (!encoder) encoder.emplace(picture.width, picture.height, arguments.options);
      const std::vector<unsigned char>& message = encoder->Encode(picture);
      CheckLength(message.size());
      writer->Write(message.data(), message.size());
    } catch (const RecordError& error) {
      throw ToolError(InputName(path) + ": " + error.what());
    } catch (const std::bad_alloc&) {
      throw ToolError(InputName(path) + ": not enough memory");
    }
    ++done;
    progress.Update(done, done);
  }
}

void CheckVersionOptions(const RecordArguments& arguments) {
  if (arguments.version != 1) return;
  const RecordOptions& options = arguments.options;
  const std::pair<const char*, bool> given[] = {{"--reduced", options.reduced},
                                                {"--passes", options.passes > 1},
                                                {"--renew", options.renewPercent > 0}};
  for (const auto& [name, isGiven] : given) {
    if (isGiven) throw CLI::ValidationError(name, "needs --codec 2");
  }
}

int Record(RecordArguments arguments) {
  RecordOptions& options = arguments.options;
  options.codecType = arguments.version == 1 ? kCodecTypeVersion1 : kCodecTypeVersion2;
  CheckVersionOptions(arguments);
  static_cast<void>(ParseBlockSize(arguments.block, &options.blockWidth, &options.blockHeight));
  for (const std::string& picture : arguments.pictures) ProtectInput(picture);
  RefuseTerminal(arguments.output);
  MessageFileWriter writer(arguments.output);
  EncodeAll(arguments, &writer);
  writer.Commit();
  return kExitSuccess;
}

void AddOptions(CLI::App* command, RecordArguments* arguments) {
  RecordOptions& options = arguments->options;
  command->add_option("FRAME.png", arguments->pictures, "Pictures of one size, in order")
      ->check(FileNameValidator())
      ->required()
      ->type_name("");
  command->add_option("-o,--output", arguments->output, "Message file to write, \"-\" for stdout")
      ->check(FileNameValidator())
      ->required()
      ->type_name("FILE");
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
  command->add_flag("-q,--quiet", arguments->quiet, "No progress bar");
}

}  // namespace

void AddRecordCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("record", "Make a stream from PNG pictures");
  command->footer(kFooter);
  // The command outlives this call, and what it stores its arguments in must live as long.
  auto arguments = std::make_shared<RecordArguments>();
  AddOptions(command, arguments.get());
  command->callback([arguments, exitStatus] { *exitStatus = Record(*arguments); });
}

}  // namespace zlibvideo
