#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tools/cli/OutputFile.h"
#include "tools/decode/formats/Bt709.h"
#include "tools/decode/formats/MovieSink.h"

namespace zlibvideo {
namespace {

constexpr std::size_t kPlanes = 3;

template <int kBits>
constexpr std::size_t kSampleBytes = kBits > 8 ? 2 : 1;

template <int kBits>
void StoreSample(std::int32_t sample, unsigned char* target) {
  target[0] = static_cast<unsigned char>(sample & 0xFF);
  if constexpr (kBits > 8) target[1] = static_cast<unsigned char>(sample >> 8);
}

/// Fills `planes` with the Y, Cb and Cr planes of `frame`.
template <int kBits>
void Convert(const FrameView& frame, std::vector<unsigned char>* planes) {
  const std::size_t planeBytes = frame.PixelCount() * kSampleBytes<kBits>;
  planes->resize(planeBytes * kPlanes);
  unsigned char* y = planes->data();
  unsigned char* cb = y + planeBytes;
  unsigned char* cr = cb + planeBytes;
  for (std::size_t i = 0; i < frame.PixelCount(); ++i) {
    const unsigned char* pixel = frame.pixels + i * FrameView::kPixelBytes;
    const auto colour = Bt709<kBits>::FromRgb({pixel[2], pixel[1], pixel[0]});
    const std::size_t at = i * kSampleBytes<kBits>;
    StoreSample<kBits>(colour.y, y + at);
    StoreSample<kBits>(colour.cb, cb + at);
    StoreSample<kBits>(colour.cr, cr + at);
  }
}

/// Writes YUV4MPEG2 with as many chroma samples as luma ones (4:4:4), colours as `Bt709` has them:
/// 10-bit samples (C444p10, two bytes, least significant first) or 8-bit ones (C444).
class Y4mWriter : public MovieWriter {
 public:
  Y4mWriter(const std::string& path, const FrameView& first, FrameRate rate, bool use8Bit);

  void Add(const FrameView& frame) override;
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
  bool fUse8Bit;
  std::vector<unsigned char> fPlanes;
};

Y4mWriter::Y4mWriter(const std::string& path, const FrameView& first, FrameRate rate, bool use8Bit)
    : fFile(path), fUse8Bit(use8Bit) {
  // Progressive pictures with square pixels.
  fFile.Write("YUV4MPEG2 W" + std::to_string(first.width) + " H" + std::to_string(first.height) +
              " F" + std::to_string(rate.numerator) + ":" + std::to_string(rate.denominator) +
              " Ip A1:1 " + (use8Bit ? "C444" : "C444p10 XYSCSS=444P10") +
              " XCOLORRANGE=LIMITED\n");
}

void Y4mWriter::Add(const FrameView& frame) {
  if (fUse8Bit) {
    Convert<8>(frame, &fPlanes);
  } else {
    Convert<10>(frame, &fPlanes);
  }
  fFile.Write("FRAME\n");
  fFile.Write(fPlanes.data(), fPlanes.size());
}

}  // namespace

std::unique_ptr<FrameSink> MakeY4mSink(const OutputOptions& options) {
  return std::make_unique<MovieSink>(
      options.path, [rate = options.frameRate, use8Bit = options.y4m8Bit](const std::string& path,
                                                                          const FrameView& first) {
        return std::make_unique<Y4mWriter>(path, first, rate, use8Bit);
      });
}

}  // namespace zlibvideo
