#include "bench/PlainConvert.h"

#include <array>
#include <cstdint>

#include "colour/ReducedCode.h"

namespace zlibvideo::bench {

unsigned int PlainConvert(const unsigned char* source, unsigned int sourceLength,
                          unsigned char* destination, unsigned int room,
                          const std::uint32_t* palette, const std::uint32_t* colors) {
  const unsigned char* const end = source + sourceLength;
  unsigned int written = 0;
  while (source != end && room - written >= 3) {
    const unsigned int first = *source++;
    std::uint32_t color;
    if (first < 0x80) {
      color = palette[first];
    } else {
      if (source == end) break;
      color = colors[(first & 0x7F) << 8 | *source++];
    }
    StorePixel(destination + written, color);
    written += 3;
  }
  return written;
}

const std::uint32_t* PlainColorTable() {
  static const auto table = [] {
    std::array<std::uint32_t, 1 << 15> colors;
    for (std::uint32_t c = 0; c < colors.size(); ++c) {
      colors[c] = WidenColor15(c);
    }
    return colors;
  }();
  return table.data();
}

}  // namespace zlibvideo::bench
