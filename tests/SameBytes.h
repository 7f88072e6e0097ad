#ifndef ZLIBVIDEO_TESTS_SAMEBYTES_H
#define ZLIBVIDEO_TESTS_SAMEBYTES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

/// Comparisons that print the place of the first difference, not all bytes.
namespace zlibvideo {

inline testing::AssertionResult Compare(std::span<const unsigned char> expected,
                                        std::span<const unsigned char> got) {
  const auto [wanted, found] = std::ranges::mismatch(expected, got);
  if (wanted == expected.end() && found == got.end()) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "expected " << expected.size() << " bytes, got " << got.size()
         << ", different from byte " << wanted - expected.begin() << " on";
}

/// Vectors, strings or spans of bytes.
template <typename Expected, typename Got>
testing::AssertionResult SameBytes(const Expected& expected, const Got& got) {
  const auto bytes = [](const auto& range) {
    static_assert(sizeof(*std::data(range)) == 1);
    return std::span(reinterpret_cast<const unsigned char*>(std::data(range)), std::size(range));
  };
  return Compare(bytes(expected), bytes(got));
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
