#include "tools/decode/Y4mWriter.h"

#include <cstddef>
#include <cstdint>

#include "tools/decode/Bt709.h"

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

}  // namespace

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

}  // namespace zlibvideo
