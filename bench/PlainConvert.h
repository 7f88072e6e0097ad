#ifndef ZLIBVIDEO_BENCH_PLAINCONVERT_H
#define ZLIBVIDEO_BENCH_PLAINCONVERT_H

#include <cstdint>

namespace zlibvideo::bench {

/// Converts a colour-reduced stream a code at a time. Returns the bytes written. The component's
/// conversion is measured against it. Compiled with -O2, which makes it fastest.
unsigned int PlainConvert(const unsigned char* source, unsigned int sourceLength,
                          unsigned char* destination, unsigned int room,
                          const std::uint32_t* palette, const std::uint32_t* colors);

/// The 32768 colours 0x00RRGGBB of the 15-bit colours.
const std::uint32_t* PlainColorTable();

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_PLAINCONVERT_H
