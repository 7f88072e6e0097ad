#include <webp/encode.h>
#include <webp/mux.h>

#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "tools/decode/formats/MovieSink.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
namespace {

/// libwebp's lossless presets go from 0, fast, to 9, small.
constexpr int kLosslessLevel = 3;

constexpr const char* kVersionProblem =
    "libwebp does not match the version this program was built with";

/// Owns a WebPPicture.
struct ScopedPicture {
  WebPPicture picture = {};

  ScopedPicture() {
    if (WebPPictureInit(&picture) == 0) throw std::bad_alloc();
  }
  ~ScopedPicture() { WebPPictureFree(&picture); }
  ScopedPicture(const ScopedPicture&) = delete;
  ScopedPicture& operator=(const ScopedPicture&) = delete;
};

WebPConfig LosslessConfig() {
  WebPConfig config;
  if (WebPConfigInit(&config) == 0 || WebPConfigLosslessPreset(&config, kLosslessLevel) == 0) {
    throw ToolError(kVersionProblem);
  }
  config.exact = 1;
  return config;
}

/// Writes a lossless animated WebP that plays in a loop. Holds the compressed movie in memory until
/// it is complete: the header of the format contains its length.
class WebpSink : public MovieSink {
 public:
  explicit WebpSink(const OutputOptions& options)
      : MovieSink(options.path), fRate(options.frameRate) {}

 private:
  void Begin(const FrameView& first) override;
  void Add(const FrameView& frame) override;
  void End() override;

  [[noreturn]] void Fail(const std::string& problem) {
    throw ToolError(File().Name() + ": cannot be written as WebP: " + problem);
  }
  /// Throws unless the last call of the encoder returned true.
  void Require(int result) {
    if (result == 0) Fail(WebPAnimEncoderGetError(fEncoder.get()));
  }
  /// The time when the next picture begins, in milliseconds.
  int Now() const { return static_cast<int>(fRate.StartOf(fPictures)); }

  FrameRate fRate;
  std::uint64_t fPictures = 0;
  std::unique_ptr<WebPAnimEncoder, void (*)(WebPAnimEncoder*)> fEncoder{nullptr,
                                                                        WebPAnimEncoderDelete};
};

void WebpSink::Begin(const FrameView& first) {
  WebPAnimEncoderOptions options;
  if (WebPAnimEncoderOptionsInit(&options) == 0) Fail(kVersionProblem);
  fEncoder.reset(WebPAnimEncoderNew(first.width, first.height, &options));
  if (fEncoder == nullptr) throw std::bad_alloc();
}

void WebpSink::Add(const FrameView& frame) {
  ScopedPicture scoped;
  WebPPicture& picture = scoped.picture;
  picture.use_argb = 1;
  picture.width = frame.width;
  picture.height = frame.height;
  // Without the fourth byte: pictures are opaque.
  if (WebPPictureImportBGRX(&picture, frame.pixels, static_cast<int>(frame.RowBytes())) == 0) {
    throw std::bad_alloc();
  }
  const WebPConfig config = LosslessConfig();
  Require(WebPAnimEncoderAdd(fEncoder.get(), &picture, Now(), &config));
  ++fPictures;
}

void WebpSink::End() {
  // The end of the last picture.
  Require(WebPAnimEncoderAdd(fEncoder.get(), nullptr, Now(), nullptr));
  WebPData movie;
  WebPDataInit(&movie);
  const std::unique_ptr<WebPData, void (*)(WebPData*)> owner(&movie, WebPDataClear);
  Require(WebPAnimEncoderAssemble(fEncoder.get(), &movie));
  File().Write(movie.bytes, movie.size);
}

}  // namespace

std::unique_ptr<FrameSink> MakeWebpSink(const OutputOptions& options) {
  return std::make_unique<WebpSink>(options);
}

}  // namespace zlibvideo
