#ifndef ZLIBVIDEO_BENCH_STILLFORMAT_H
#define ZLIBVIDEO_BENCH_STILLFORMAT_H

#include <array>
#include <cstddef>
#include <string>

#include "bench/StreamFile.h"
#include "host/standin/StandInBitmap.h"

namespace zlibvideo::bench {

/// A lossless format for single pictures, which one could use for the pictures of a stream.
struct StillFormat {
  /// A word.
  std::string name;
  /// The library and how it is told to encode.
  std::string settings;
  /// Both throw `std::runtime_error` when the library fails. Decoding writes all of `pixels`, which
  /// has the size of the picture: rows from the top, 4 bytes a pixel as the decoder writes them.
  Bytes (*encode)(const StandInBitmap& picture);
  void (*decode)(const Bytes& file, int width, Bytes* pixels);

  static constexpr std::size_t kCount = 3;
  static const std::array<StillFormat, kCount>& All();
};

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_STILLFORMAT_H
