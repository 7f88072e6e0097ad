#include <webp/encode.h>
#include <webp/mux.h>

#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "tools/decode/formats/MovieSink.h"
#include "tools/files/OutputFile.h"
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

bool IsOutOfMemory(WebPEncodingError error) {
  return error == VP8_ENC_ERROR_OUT_OF_MEMORY || error == VP8_ENC_ERROR_BITSTREAM_OUT_OF_MEMORY;
}

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
class WebpWriter : public MovieWriter {
 public:
  WebpWriter(const std::string& path, const FrameView& first, FrameRate rate);
  ~WebpWriter() override;

  void Add(const FrameView& frame) override;
  void Finish() override;

 private:
  struct DeleteEncoder {
    void operator()(WebPAnimEncoder* encoder) const;
  };

  [[noreturn]] void Fail(const std::string& problem) const;
  /// The time when the next picture begins, in milliseconds.
  int Now() const { return static_cast<int>(fRate.StartOf(fPictures)); }

  OutputFile fFile;
  FrameRate fRate;
  std::uint64_t fPictures = 0;
  std::unique_ptr<WebPAnimEncoder, DeleteEncoder> fEncoder;
};

void WebpWriter::DeleteEncoder::operator()(WebPAnimEncoder* encoder) const {
  WebPAnimEncoderDelete(encoder);
}

WebpWriter::WebpWriter(const std::string& path, const FrameView& first, FrameRate rate)
    : fFile(path), fRate(rate) {
  WebPAnimEncoderOptions options;
  if (WebPAnimEncoderOptionsInit(&options) == 0) Fail(kVersionProblem);
  fEncoder.reset(WebPAnimEncoderNew(first.width, first.height, &options));
  if (fEncoder == nullptr) throw std::bad_alloc();
}

WebpWriter::~WebpWriter() = default;

void WebpWriter::Add(const FrameView& frame) {
  ScopedPicture scoped;
  WebPPicture& picture = scoped.picture;
  picture.use_argb = 1;
  picture.width = frame.width;
  picture.height = frame.height;
  const int stride = frame.width * static_cast<int>(FrameView::kPixelBytes);
  // Without the fourth byte: pictures are opaque.
  if (WebPPictureImportBGRX(&picture, frame.pixels, stride) == 0) throw std::bad_alloc();
  const WebPConfig config = LosslessConfig();
  if (WebPAnimEncoderAdd(fEncoder.get(), &picture, Now(), &config) == 0) {
    if (IsOutOfMemory(picture.error_code)) throw std::bad_alloc();
    Fail(WebPAnimEncoderGetError(fEncoder.get()));
  }
  ++fPictures;
}

void WebpWriter::Finish() {
  // The end of the last picture.
  if (WebPAnimEncoderAdd(fEncoder.get(), nullptr, Now(), nullptr) == 0) {
    Fail(WebPAnimEncoderGetError(fEncoder.get()));
  }
  WebPData movie;
  WebPDataInit(&movie);
  const std::unique_ptr<WebPData, void (*)(WebPData*)> owner(&movie, WebPDataClear);
  if (WebPAnimEncoderAssemble(fEncoder.get(), &movie) == 0) {
    Fail(WebPAnimEncoderGetError(fEncoder.get()));
  }
  fFile.Write(movie.bytes, movie.size);
  fFile.Commit();
}

void WebpWriter::Fail(const std::string& problem) const {
  throw ToolError(fFile.Name() + ": cannot be written as WebP: " + problem);
}

}  // namespace

std::unique_ptr<FrameSink> MakeWebpSink(const OutputOptions& options) {
  return std::make_unique<MovieSink>(
      options.path, [rate = options.frameRate](const std::string& path, const FrameView& first) {
        return std::make_unique<WebpWriter>(path, first, rate);
      });
}

}  // namespace zlibvideo
