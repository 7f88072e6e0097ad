#ifndef ZLIBVIDEO_TESTS_SAMEBYTES_H
#define ZLIBVIDEO_TESTS_SAMEBYTES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

/// Comparisons that print the place of the first difference, not all bytes.
namespace zlibvideo {

/// Vectors, strings or spans of bytes.
template <typename Expected, typename Got>
testing::AssertionResult SameBytes(const Expected& expected, const Got& got) {
  static_assert(sizeof(*expected.begin()) == 1 && sizeof(*got.begin()) == 1);
  const auto areSame = [](auto a, auto b) { return ((a ^ b) & 0xFF) == 0; };
  const auto [wanted, found] =
      std::mismatch(expected.begin(), expected.end(), got.begin(), got.end(), areSame);
  if (wanted == expected.end() && found == got.end()) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "expected " << expected.size() << " bytes, got " << got.size()
         << ", different from byte " << wanted - expected.begin() << " on";
}

/// The pixels of a bitmap: rows from the top, without gaps.
struct BitmapPixels {
  int width = 0;
  std::vector<unsigned char> bytes = {};
};

inline testing::AssertionResult SamePixels(const BitmapPixels& expected, const BitmapPixels& got) {
  if (expected.width == got.width) return SameBytes(expected.bytes, got.bytes);
  return testing::AssertionFailure()
         << "rows of " << expected.width << " pixels expected, of " << got.width << " got";
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_SAMEBYTES_H
