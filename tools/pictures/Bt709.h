#ifndef ZLIBVIDEO_TOOLS_PICTURES_BT709_H
#define ZLIBVIDEO_TOOLS_PICTURES_BT709_H

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
/// rounding moves no component by more than 0.42 of a level. With 8 bits many do not.
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

  static constexpr Rgb ToRgb(YCbCr colour) {
    const double luma = (colour.y - kYZero) / kYRange;
    const double blue = luma + kBlueScale * (colour.cb - kChromaZero) / kChromaRange;
    const double red = luma + kRedScale * (colour.cr - kChromaZero) / kChromaRange;
    const double green = (luma - kRedLuma * red - kBlueLuma * blue) / kGreenLuma;
    return {ToLevel(red), ToLevel(green), ToLevel(blue)};
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

  /// Fraction bits of the weights. A sample of 10 bits, weighed, stays within 31 bits.
  static constexpr int kFractionBits = 20;

  static constexpr std::int32_t Fixed(double weight) {
    const double scaled = weight / kMaxLevel * (1 << kFractionBits);
    return static_cast<std::int32_t>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
  }

  static constexpr Weights kYWeights = {Fixed(kYRange * kRedLuma), Fixed(kYRange* kGreenLuma),
                                        Fixed(kYRange* kBlueLuma)};
  static constexpr Weights kCbWeights = {Fixed(-kChromaRange * kRedLuma / kBlueScale),
                                         Fixed(-kChromaRange* kGreenLuma / kBlueScale),
                                         Fixed(kChromaRange*(1 - kBlueLuma) / kBlueScale)};
  static constexpr Weights kCrWeights = {Fixed(kChromaRange * (1 - kRedLuma) / kRedScale),
                                         Fixed(-kChromaRange* kGreenLuma / kRedScale),
                                         Fixed(-kChromaRange* kBlueLuma / kRedScale)};

  static constexpr std::int32_t Weigh(Rgb colour, Weights weights, std::int32_t zero) {
    constexpr std::int32_t kHalf = 1 << (kFractionBits - 1);
    return (colour.red * weights.red + colour.green * weights.green + colour.blue * weights.blue +
            (zero << kFractionBits) + kHalf) >>
           kFractionBits;
  }

  static constexpr int ToLevel(double component) {
    const double level = component * kMaxLevel;
    if (level <= 0) return 0;
    if (level >= kMaxLevel) return static_cast<int>(kMaxLevel);
    return static_cast<int>(level + 0.5);
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_BT709_H
