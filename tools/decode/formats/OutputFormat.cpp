#include "tools/decode/formats/OutputFormat.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace zlibvideo {

// Each function is in the file that is named after the format.
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
    {.name = "png", .files = Files::kOnePerPicture, .make = MakePngSink},
    {.name = "bgra", .otherExtension = "raw", .files = Files::kOne, .make = MakeBgraSink},
    {.name = "hash",
     .otherExtension = "hashes",
     .files = Files::kOne,
     .isText = true,
     .make = MakeHashSink},
    {.name = "null", .files = Files::kNone, .make = MakeNullSink},
    {.name = "webp", .files = Files::kOne, .hasFrameRate = true, .make = MakeWebpSink},
    {.name = "y4m", .files = Files::kOne, .hasFrameRate = true, .make = MakeY4mSink},
};

}  // namespace

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
