#include "tools/decode/formats/OutputFormat.h"

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

const OutputFormat* FindFormat(const std::string& name) {
  for (const OutputFormat& format : kFormats) {
    if (name == format.name || name == format.otherExtension) return &format;
  }
  return nullptr;
}

}  // namespace zlibvideo
