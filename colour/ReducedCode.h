#ifndef ZLIBVIDEO_COLOUR_REDUCEDCODE_H
#define ZLIBVIDEO_COLOUR_REDUCEDCODE_H

#include <cstdint>

namespace zlibvideo {

/// The codes of a colour-reduced stream. A byte below `kWideCodeBit` is an index into the palette.
/// Any other byte begins a code of two bytes, most significant first, whose low 15 bits are a
/// colour of five bits each of red, green and blue.
inline constexpr unsigned int kWideCodeBit = 0x80;
inline constexpr int kIndexBytes = 1;
inline constexpr int kWideCodeBytes = 2;

inline bool IsIndex(const unsigned char* code) {
  return *code < kWideCodeBit;
}

/// The 15-bit colour of a code of two bytes.
inline unsigned int Color15(const unsigned char* code) {
  return (code[0] & (kWideCodeBit - 1)) << 8 | code[1];
}

/// A 15-bit colour as 0x00RRGGBB: each component moves to the top of its byte, the low three bits
/// of every byte stay 0.
constexpr std::uint32_t WidenColor15(std::uint32_t color) {
  return (color << 9 & 0xF80000) | (color << 6 & 0xF800) | (color << 3 & 0xF8);
}

/// Writes a colour 0x00RRGGBB as a block pixel, 3 bytes.
inline void StorePixel(unsigned char* pixel, std::uint32_t color) {
  pixel[0] = static_cast<unsigned char>(color & 0xFF);
  pixel[1] = static_cast<unsigned char>(color >> 8 & 0xFF);
  pixel[2] = static_cast<unsigned char>(color >> 16 & 0xFF);
}

/// The inverse of `WidenColor15`. Bits beyond five are dropped.
constexpr std::uint32_t NarrowToColor15(std::uint32_t color) {
  return (color >> 9 & 0x7C00) | (color >> 6 & 0x03E0) | (color >> 3 & 0x001F);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_COLOUR_REDUCEDCODE_H
