#include "tools/decode/MakeSink.h"

#include "tools/decode/BgraSink.h"
#include "tools/decode/HashSink.h"
#include "tools/decode/MovieSink.h"
#include "tools/decode/NullSink.h"
#include "tools/decode/PngSink.h"
#include "tools/decode/VerifySink.h"
#include "tools/decode/WebpWriter.h"
#include "tools/decode/Y4mWriter.h"

namespace zlibvideo {
namespace {

MovieSink::OpenWriter OpenWebp(FrameRate rate) {
  return [rate](const std::string& path, const FrameView& first) {
    return std::make_unique<WebpWriter>(path, first, rate);
  };
}

MovieSink::OpenWriter OpenY4m(FrameRate rate, bool use8Bit) {
  return [rate, use8Bit](const std::string& path, const FrameView& first) {
    return std::make_unique<Y4mWriter>(path, first, rate, use8Bit);
  };
}

}  // namespace

std::unique_ptr<FrameSink> MakeSink(const DecodeOptions& options) {
  if (!options.verify.empty()) return std::make_unique<VerifySink>(options.verify);
  switch (options.format) {
    case OutputFormat::kPng:
      return std::make_unique<PngSink>(options.output);
    case OutputFormat::kBgra:
      return std::make_unique<BgraSink>(options.output);
    case OutputFormat::kHash:
      return std::make_unique<HashSink>(options.output);
    case OutputFormat::kWebp:
      return std::make_unique<MovieSink>(options.output, OpenWebp(options.frameRate));
    case OutputFormat::kY4m:
      return std::make_unique<MovieSink>(options.output,
                                         OpenY4m(options.frameRate, options.y4m8Bit));
    case OutputFormat::kNull:
      break;
  }
  return std::make_unique<NullSink>();
}

}  // namespace zlibvideo
