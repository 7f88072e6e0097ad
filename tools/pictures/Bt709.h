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
/// rounds and clips to 8 bits. With 10 bits every one of the 2^24 colours comes back as it was:
/// rounding moves no component by more than 0.42 of a level. With 8 bits many do not. Weights in
/// fixed point move it by less than 0.001 more.
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
    return {Weigh(colour, kYWeights, kYZero), Weigh(colour, kCbWeights, kChromaZero),
            Weigh(colour, kCrWeights, kChromaZero)};
  }

  /// Samples are from 0 to 2^kBits - 1; outside the limited range they give the nearest colours.
  static constexpr Rgb ToRgb(YCbCr colour) {
    const std::int32_t luma = (colour.y - kYZero) * kLevelPerY + kHalf;
    const std::int32_t cb = colour.cb - kChromaZero;
    const std::int32_t cr = colour.cr - kChromaZero;
    return {ToLevel(luma + cr * kRedPerCr), ToLevel(luma - cb * kGreenPerCb - cr * kGreenPerCr),
            ToLevel(luma + cb * kBluePerCb)};
  }

 private:
  struct Weights {
    std::int32_t red;
    std::int32_t green;
    std::int32_t blue;
  };

  static constexpr double kRedLuma = 0.2126;
  static constexpr double kGreenLuma = 0.7152;
  static constexpr double kBlueLuma = 0.0722;
  static constexpr double kBlueScale = 2 * (1 - kBlueLuma);
  static constexpr double kRedScale = 2 * (1 - kRedLuma);
  static constexpr double kMaxLevel = 255;
  static constexpr double kSampleScale = 1 << (kBits - 8);
  static constexpr double kYRange = 219 * kSampleScale;
  static constexpr double kChromaRange = 224 * kSampleScale;
  static constexpr std::int32_t kYZero = 16 << (kBits - 8);
  static constexpr std::int32_t kChromaZero = 128 << (kBits - 8);

  /// Fraction bits of the weights. A sample of 10 bits, weighed, stays within 31 bits, and so does
  /// what samples of 10 bits add up to as a level.
  static constexpr int kFractionBits = 20;
  static constexpr std::int32_t kHalf = 1 << (kFractionBits - 1);

  static constexpr std::int32_t Fixed(double weight) {
    const double scaled = weight * (1 << kFractionBits);
    return static_cast<std::int32_t>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
  }
  static constexpr Weights FixedPerLevel(double red, double green, double blue) {
    return {Fixed(red / kMaxLevel), Fixed(green / kMaxLevel), Fixed(blue / kMaxLevel)};
  }

  static constexpr Weights kYWeights =
      FixedPerLevel(kYRange * kRedLuma, kYRange* kGreenLuma, kYRange* kBlueLuma);
  static constexpr Weights kCbWeights =
      FixedPerLevel(-kChromaRange * kRedLuma / kBlueScale, -kChromaRange* kGreenLuma / kBlueScale,
                    kChromaRange*(1 - kBlueLuma) / kBlueScale);
  static constexpr Weights kCrWeights =
      FixedPerLevel(kChromaRange * (1 - kRedLuma) / kRedScale,
                    -kChromaRange* kGreenLuma / kRedScale, -kChromaRange* kBlueLuma / kRedScale);

  static constexpr double kLevelPerChroma = kMaxLevel / kChromaRange;
  static constexpr std::int32_t kLevelPerY = Fixed(kMaxLevel / kYRange);
  static constexpr std::int32_t kRedPerCr = Fixed(kLevelPerChroma * kRedScale);
  static constexpr std::int32_t kBluePerCb = Fixed(kLevelPerChroma * kBlueScale);
  static constexpr std::int32_t kGreenPerCr =
      Fixed(kLevelPerChroma * kRedScale * kRedLuma / kGreenLuma);
  static constexpr std::int32_t kGreenPerCb =
      Fixed(kLevelPerChroma * kBlueScale * kBlueLuma / kGreenLuma);

  static constexpr std::int32_t Weigh(Rgb colour, Weights weights, std::int32_t zero) {
    return (colour.red * weights.red + colour.green * weights.green + colour.blue * weights.blue +
            (zero << kFractionBits) + kHalf) >>
           kFractionBits;
  }

  /// Of a component with `kHalf` added, so that it is rounded.
  static constexpr int ToLevel(std::int32_t component) {
    return std::clamp(component >> kFractionBits, 0, static_cast<int>(kMaxLevel));
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_BT709_H
