#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "tools/decode/formats/MovieSink.h"
#include "tools/pictures/Bt709.h"
#include "tools/pictures/Y4mPictures.h"

namespace zlibvideo {
namespace {

/// More than 8 bits have two bytes, the least significant first on every machine.
template <int kBits>
using Sample = std::conditional_t<(kBits > 8), std::uint16_t, std::uint8_t>;

template <int kBits>
Sample<kBits> ToSample(std::int32_t value) {
  const auto sample = static_cast<Sample<kBits>>(value);
  if constexpr (kBits <= 8 || std::endian::native == std::endian::little) return sample;
  return static_cast<Sample<kBits>>(sample << 8 | sample >> 8);
}

/// Fills the planes of Y, Cb and Cr, which follow one another.
template <int kBits>
void Convert(const FrameView& frame, std::vector<Sample<kBits>>* planes) {
  const std::size_t count = frame.PixelCount();
  planes->resize(count * Y4mHeader::kPlanes);
  const unsigned char* __restrict const pixels = frame.pixels;
  Sample<kBits>* __restrict const out = planes->data();
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned char* pixel = pixels + i * FrameView::kPixelBytes;
    const auto colour = Bt709<kBits>::FromRgb({pixel[2], pixel[1], pixel[0]});
    out[i] = ToSample<kBits>(colour.y);
    out[count + i] = ToSample<kBits>(colour.cb);
    out[2 * count + i] = ToSample<kBits>(colour.cr);
  }
}

/// Writes YUV4MPEG2 in 4:4:4 with the colours of `Bt709`, in samples of 10 bits (C444p10: two
/// bytes, least significant first) or 8 bits (C444).
template <int kBits>
class Y4mSink : public MovieSink {
 public:
  explicit Y4mSink(const OutputOptions& options)
      : MovieSink(options.path), fRate(options.frameRate) {}

 private:
  void Begin(const FrameView& first) override;
  void Add(const FrameView& frame) override;

  FrameRate fRate;
  std::vector<Sample<kBits>> fPlanes;
};

template <int kBits>
void Y4mSink<kBits>::Begin(const FrameView& first) {
  // Progressive pictures with square pixels.
  std::ostringstream line;
  line << Y4mHeader::kSignature << " W" << first.width << " H" << first.height << " F"
       << fRate.numerator << ':' << fRate.denominator << " Ip A1:1 C"
       << (kBits > 8 ? Y4mHeader::kTenBits : Y4mHeader::kEightBits)
       << (kBits > 8 ? " XYSCSS=444P10 " : " ") << Y4mHeader::kRange << Y4mHeader::kLimited << '\n';
  File().Write(line.str());
}

template <int kBits>
void Y4mSink<kBits>::Add(const FrameView& frame) {
  Convert<kBits>(frame, &fPlanes);
  File().Write(std::string(Y4mHeader::kFrameMark) + '\n');
  File().Write(fPlanes.data(), fPlanes.size() * sizeof(Sample<kBits>));
}

}  // namespace

std::unique_ptr<FrameSink> MakeY4mSink(const OutputOptions& options) {
  if (options.y4m8Bit) return std::make_unique<Y4mSink<8>>(options);
  return std::make_unique<Y4mSink<10>>(options);
}

}  // namespace zlibvideo
