#ifndef ZLIBVIDEO_TESTS_SAMEBYTES_H
#define ZLIBVIDEO_TESTS_SAMEBYTES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

/// Comparisons that name the first byte that differs, in place of all the bytes.
namespace zlibvideo {

inline testing::AssertionResult Compare(std::span<const unsigned char> expected,
                                        std::span<const unsigned char> got) {
  const auto [wanted, found] = std::ranges::mismatch(expected, got);
  const bool ends = wanted == expected.end(), endsToo = found == got.end();
  if (ends && endsToo) return testing::AssertionSuccess();
  const auto text = [](auto byte, bool end) { return end ? "the end" : std::to_string(*byte); };
  return testing::AssertionFailure()
         << expected.size() << " bytes expected, " << got.size() << " got; at byte "
         << wanted - expected.begin() << ", " << text(wanted, ends) << " expected, "
         << text(found, endsToo) << " got";
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

/// The pixels of a bitmap, rows from the top with nothing between them.
struct BitmapPixels {
  int width = 0;
  std::vector<unsigned char> bytes = {};

  bool operator==(const BitmapPixels&) const = default;
};

inline testing::AssertionResult SamePixels(const BitmapPixels& expected, const BitmapPixels& got) {
  if (expected.width == got.width) return SameBytes(expected.bytes, got.bytes);
  return testing::AssertionFailure()
         << "rows of " << expected.width << " pixels expected, of " << got.width << " got";
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_SAMEBYTES_H
