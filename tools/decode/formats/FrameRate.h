#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_FRAMERATE_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_FRAMERATE_H

#include <cstdint>
#include <string>

namespace zlibvideo {

/// Pictures a second, as a fraction.
struct FrameRate {
  static constexpr std::uint32_t kMax = 1000;
  /// Seconds of a picture at the slowest rate.
  static constexpr std::uint32_t kMaxSeconds = 10;

  std::uint32_t numerator = 10;
  std::uint32_t denominator = 1;

  /// Reads "10", "29.97" or "30000/1001", from 0.1 to 1000. For any other text, returns false and
  /// leaves `rate` as it was.
  [[nodiscard]] static bool Parse(const std::string& text, FrameRate* rate);

  /// The time when picture `index`, from 0, begins, in milliseconds, rounded.
  std::uint64_t StartOf(std::uint64_t index) const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_FRAMERATE_H
