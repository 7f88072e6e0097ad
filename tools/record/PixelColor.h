#ifndef ZLIBVIDEO_TOOLS_RECORD_PIXELCOLOR_H
#define ZLIBVIDEO_TOOLS_RECORD_PIXELCOLOR_H

#include <cstdint>

namespace zlibvideo {

/// A block pixel as a colour 0x00RRGGBB.
inline std::uint32_t LoadColor(const unsigned char* pixel) {
  return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
}

inline void StoreColor(std::uint32_t color, unsigned char* pixel) {
  pixel[0] = static_cast<unsigned char>(color & 0xFF);
  pixel[1] = static_cast<unsigned char>(color >> 8 & 0xFF);
  pixel[2] = static_cast<unsigned char>(color >> 16 & 0xFF);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_PIXELCOLOR_H
