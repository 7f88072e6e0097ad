#ifndef ZLIBVIDEO_BENCH_UNITS_H
#define ZLIBVIDEO_BENCH_UNITS_H

namespace zlibvideo::bench {

/// What one second has of each, and the bytes of a megabyte.
inline constexpr double kMilliseconds = 1e3;
inline constexpr double kMicroseconds = 1e6;
inline constexpr double kNanoseconds = 1e9;
inline constexpr double kMegabyte = 1e6;

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_UNITS_H
