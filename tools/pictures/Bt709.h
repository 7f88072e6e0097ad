#ifndef ZLIBVIDEO_TOOLS_PICTURES_BT709_H
#define ZLIBVIDEO_TOOLS_PICTURES_BT709_H

#include <algorithm>
#include <cstdint>

namespace zlibvideo {

/// Colour conversion between 8-bit R'G'B' and limited-range Y'CbCr with the matrix of ITU-R BT.709,
/// samples of `kBits` bits. With S = 2^(kBits - 8), and R, G, B from 0 to 1:
///
///   Y  = S × ( 16 + 219 × (0.2126 R + 0.7152 G + 0.0722 B))
///   Cb = S × (128 + 224 × (B - luma) / 1.8556)
///   Cr = S × (128 + 224 × (R - luma) / 1.5748)
///
/// each rounded to the nearest integer. The inverse solves these for R, G and B, times 255, and
/// rounds and clips to 8 bits. With 10 bits, each of the 2^24 colours is restored: rounding moves
/// no component by more than 0.42 of a level. With 8 bits many colours are not.
template <int kBits>
class Bt709 {
 public:
  struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Rgb&) const = default;
  };
  struct YCbCr {
    std::int32_t y = 0;
    std::int32_t cb = 0;
    std::int32_t cr = 0;
  };

  static constexpr YCbCr FromRgb(Rgb colour) {
    const auto red = static_cast<float>(colour.red);
    const auto green = static_cast<float>(colour.green);
    const auto blue = static_cast<float>(colour.blue);
    const float luma = kRedLuma * red + kGreenLuma * green + kBlueLuma * blue;
    return {Round(kYZero + luma * kYPerLevel),
            Round(kChromaZero + (blue - luma) * (kChromaPerLevel / kBlueScale)),
            Round(kChromaZero + (red - luma) * (kChromaPerLevel / kRedScale))};
  }

  /// Samples are from 0 to 2^kBits - 1. Samples outside the limited range give the nearest colours.
  static constexpr Rgb ToRgb(YCbCr colour) {
    const float luma = (static_cast<float>(colour.y) - kYZero) * (1 / kYPerLevel);
    const float red =
        luma + (static_cast<float>(colour.cr) - kChromaZero) * (kRedScale / kChromaPerLevel);
    const float blue =
        luma + (static_cast<float>(colour.cb) - kChromaZero) * (kBlueScale / kChromaPerLevel);
    const float green = (luma - kRedLuma * red - kBlueLuma * blue) * (1 / kGreenLuma);
    return {ToLevel(red), ToLevel(green), ToLevel(blue)};
  }

 private:
  static constexpr float kRedLuma = 0.2126F;
  static constexpr float kGreenLuma = 0.7152F;
  static constexpr float kBlueLuma = 0.0722F;
  static constexpr float kBlueScale = 2 * (1 - kBlueLuma);
  static constexpr float kRedScale = 2 * (1 - kRedLuma);
  static constexpr float kMaxLevel = 255;
  static constexpr float kSampleScale = 1 << (kBits - 8);
  static constexpr float kYZero = 16 * kSampleScale;
  static constexpr float kYPerLevel = 219 * kSampleScale / kMaxLevel;
  static constexpr float kChromaZero = 128 * kSampleScale;
  static constexpr float kChromaPerLevel = 224 * kSampleScale / kMaxLevel;

  /// REQUIRES: not negative.
  static constexpr int Round(float value) { return static_cast<int>(value + 0.5F); }
  static constexpr int ToLevel(float value) { return Round(std::clamp(value, 0.0F, kMaxLevel)); }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_BT709_H
