#ifndef ZLIBVIDEO_TESTS_SAMEBYTES_H
#define ZLIBVIDEO_TESTS_SAMEBYTES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>
#include <vector>

#include "host/BitmapPixel.h"

/// Comparisons that say where bytes first differ, and how, in place of all the bytes.
namespace zlibvideo {

/// How bytes make up pixels; as it stands, not at all.
struct Layout {
  int rowPixels = 0, pixelBytes = 1;
};

inline testing::AssertionResult Compare(std::span<const unsigned char> expected,
                                        std::span<const unsigned char> got, Layout layout) {
  const auto [wanted, found] = std::ranges::mismatch(expected, got);
  const bool ends = wanted == expected.end(), endsToo = found == got.end();
  if (ends && endsToo) return testing::AssertionSuccess();
  std::ostringstream text;
  const auto at = wanted - expected.begin();
  text << "of " << expected.size() << " bytes expected and " << got.size()
       << " got, the first to differ is byte " << at;
  if (layout.rowPixels > 0) {
    const auto pixel = at / layout.pixelBytes;
    text << " (row " << pixel / layout.rowPixels << ", pixel " << pixel % layout.rowPixels
         << ", its byte " << at % layout.pixelBytes << ')';
  }
  const auto byte = [](auto position, bool end) { return end ? -1 : int{*position}; };
  text << ": expected " << byte(wanted, ends) << ", got " << byte(found, endsToo)
       << (ends || endsToo ? " (-1: the end)" : "");
  return testing::AssertionFailure() << text.str();
}

/// Vectors, strings or spans of bytes.
template <typename Expected, typename Got>
testing::AssertionResult SameBytes(const Expected& expected, const Got& got, Layout layout = {}) {
  const auto bytes = [](const auto& range) {
    static_assert(sizeof(*std::data(range)) == 1);
    return std::span(reinterpret_cast<const unsigned char*>(std::data(range)), std::size(range));
  };
  return Compare(bytes(expected), bytes(got), layout);
}

/// What a bitmap holds, rows from the top with nothing between them.
struct BitmapPixels {
  int width = 0;
  std::vector<unsigned char> bytes = {};

  bool operator==(const BitmapPixels&) const = default;
};

inline testing::AssertionResult SamePixels(const BitmapPixels& expected, const BitmapPixels& got) {
  if (expected.width != got.width) {
    return testing::AssertionFailure()
           << "rows of " << expected.width << " pixels expected, of " << got.width << " got";
  }
  return SameBytes(expected.bytes, got.bytes, {expected.width, kBitmapPixelBytes});
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_SAMEBYTES_H
