#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "tools/decode/formats/MovieSink.h"
#include "tools/files/OutputFile.h"
#include "tools/pictures/Bt709.h"
#include "tools/pictures/Y4mHeader.h"

#if defined(__x86_64__) || defined(__i386__)
#define ZLIBVIDEO_Y4M_X86
#endif

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

/// Fills the planes of Y, Cb and Cr, which follow one another. It is compiled once for each set of
/// instructions.
template <int kBits>
[[gnu::always_inline]] inline void ConvertPixels(const unsigned char* __restrict pixels,
                                                 std::size_t count,
                                                 Sample<kBits>* __restrict planes) {
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned char* pixel = pixels + i * FrameView::kPixelBytes;
    const auto colour = Bt709<kBits>::FromRgb({pixel[2], pixel[1], pixel[0]});
    planes[i] = ToSample<kBits>(colour.y);
    planes[count + i] = ToSample<kBits>(colour.cb);
    planes[2 * count + i] = ToSample<kBits>(colour.cr);
  }
}

#ifdef ZLIBVIDEO_Y4M_X86

/// Older x86-64 cannot multiply vectors of 32 bits, and vectors are no faster there.
template <int kBits>
[[gnu::target("avx2")]] void ConvertAvx2(const unsigned char* pixels, std::size_t count,
                                         Sample<kBits>* planes) {
  ConvertPixels<kBits>(pixels, count, planes);
}

#endif

template <int kBits>
void Convert(const FrameView& frame, std::vector<Sample<kBits>>* planes) {
  planes->resize(frame.PixelCount() * Y4mHeader::kPlanes);
#ifdef ZLIBVIDEO_Y4M_X86
  if (__builtin_cpu_supports("avx2")) {
    return ConvertAvx2<kBits>(frame.pixels, frame.PixelCount(), planes->data());
  }
#endif
  ConvertPixels<kBits>(frame.pixels, frame.PixelCount(), planes->data());
}

/// Writes YUV4MPEG2 in 4:4:4 with the colours of `Bt709`, in samples of 10 bits (C444p10: two
/// bytes, least significant first) or 8 bits (C444).
template <int kBits>
class Y4mWriter : public MovieWriter {
 public:
  Y4mWriter(const std::string& path, const FrameView& first, FrameRate rate);

  void Add(const FrameView& frame) override;
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
  std::vector<Sample<kBits>> fPlanes;
};

template <int kBits>
Y4mWriter<kBits>::Y4mWriter(const std::string& path, const FrameView& first, FrameRate rate)
    : fFile(path) {
  // Progressive pictures with square pixels.
  std::ostringstream line;
  line << Y4mHeader::kSignature << " W" << first.width << " H" << first.height << " F"
       << rate.numerator << ':' << rate.denominator << " Ip A1:1 C"
       << (kBits > 8 ? Y4mHeader::kTenBits : Y4mHeader::kEightBits)
       << (kBits > 8 ? " XYSCSS=444P10 " : " ") << Y4mHeader::kRange << Y4mHeader::kLimited << '\n';
  fFile.Write(line.str());
}

template <int kBits>
void Y4mWriter<kBits>::Add(const FrameView& frame) {
  Convert<kBits>(frame, &fPlanes);
  fFile.Write(std::string(Y4mHeader::kFrameMark) + '\n');
  fFile.Write(fPlanes.data(), fPlanes.size() * sizeof(Sample<kBits>));
}

template <int kBits>
MovieSink::OpenWriter WriterOf(FrameRate rate) {
  return [rate](const std::string& path, const FrameView& first) {
    return std::make_unique<Y4mWriter<kBits>>(path, first, rate);
  };
}

}  // namespace

std::unique_ptr<FrameSink> MakeY4mSink(const OutputOptions& options) {
  return std::make_unique<MovieSink>(options.path, options.y4m8Bit
                                                       ? WriterOf<8>(options.frameRate)
                                                       : WriterOf<10>(options.frameRate));
}

}  // namespace zlibvideo
