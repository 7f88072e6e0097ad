#include "tools/decode/formats/OutputFormat.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace zlibvideo {

// Each is in the file that is named after what it makes.
std::unique_ptr<FrameSink> MakePngSink(const OutputOptions& options);
std::unique_ptr<FrameSink> MakeBgraSink(const OutputOptions& options);
std::unique_ptr<FrameSink> MakeHashSink(const OutputOptions& options);
std::unique_ptr<FrameSink> MakeWebpSink(const OutputOptions& options);
std::unique_ptr<FrameSink> MakeY4mSink(const OutputOptions& options);

namespace {

using Files = OutputFormat::Files;

std::unique_ptr<FrameSink> MakeNullSink(const OutputOptions& /*options*/) {
  return std::make_unique<FrameSink>();
}

constexpr OutputFormat kFormats[] = {
    {.name = "png",
     .files = Files::kOnePerPicture,
     .help = "a PNG file for each picture (with \"-o -\" one after another)",
     .make = MakePngSink},
    {.name = "bgra",
     .otherExtension = "raw",
     .files = Files::kOne,
     .help = "raw pixels of all pictures, rows from the top, 4 bytes a pixel: blue,\n"
             "green, red, opacity",
     .make = MakeBgraSink},
    {.name = "hash",
     .otherExtension = "hashes",
     .files = Files::kOne,
     .isText = true,
     .help = "a line for each message: INDEX STATUS WIDTHxHEIGHT CRC32. The index is\n"
             "from 0, for message 1; the status is 1, or 0 for a failed message; the\n"
             "CRC-32 is that of the picture's bytes in format bgra",
     .make = MakeHashSink},
    {.name = "null", .files = Files::kNone, .help = "nothing, for timing", .make = MakeNullSink},
    {.name = "webp",
     .files = Files::kOnePerSize,
     .hasFrameRate = true,
     .help = "one lossless animated WebP file, assembled in memory",
     .make = MakeWebpSink},
    {.name = "y4m",
     .files = Files::kOnePerSize,
     .hasFrameRate = true,
     .help = "one YUV4MPEG2 file, 4:4:4, limited-range BT.709, 10-bit samples, from\n"
             "which every colour can be restored exactly",
     .make = MakeY4mSink},
};

}  // namespace

std::span<const OutputFormat> OutputFormats() {
  return kFormats;
}

const OutputFormat* FormatByName(const std::string& name) {
  const auto* const found =
      std::find_if(std::begin(kFormats), std::end(kFormats),
                   [&name](const OutputFormat& format) { return name == format.name; });
  return found == std::end(kFormats) ? nullptr : found;
}

const OutputFormat* FormatByExtension(const std::string& fileName) {
  std::string extension = std::filesystem::path(fileName).extension().string();
  if (extension.empty()) return nullptr;
  extension.erase(0, 1);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const OutputFormat& format : kFormats) {
    if (extension == format.name) return &format;
    if (format.otherExtension != nullptr && extension == format.otherExtension) return &format;
  }
  return nullptr;
}

}  // namespace zlibvideo
