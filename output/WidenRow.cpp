#include "output/WidenRow.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "grid/BufferSizes.h"

namespace zlibvideo {
namespace {

constexpr int kGroupPixels = 4;
constexpr std::ptrdiff_t kGroupSourceBytes = std::ptrdiff_t{kGroupPixels} * kBlockPixelBytes;
constexpr std::ptrdiff_t kGroupTargetBytes = std::ptrdiff_t{kGroupPixels} * kBitmapPixelBytes;
constexpr unsigned char kOpaque = 0xFF;

/// Words hold bytes in memory order from their low end; on a big-endian machine they are turned.
std::uint32_t InLittleEndian(std::uint32_t word) {
  if constexpr (std::endian::native == std::endian::little) return word;
  return word >> 24 | (word >> 8 & 0xFF00) | (word << 8 & 0xFF0000) | word << 24;
}

std::uint32_t LoadWord(const unsigned char* bytes) {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof(word));
  return InLittleEndian(word);
}

void StoreWord(unsigned char* bytes, std::uint32_t word) {
  word = InLittleEndian(word);
  std::memcpy(bytes, &word, sizeof(word));
}

/// 12 bytes to 16: three words in, four words out, nothing read or written beside them.
void WidenGroup(const unsigned char* source, unsigned char* target) {
  constexpr std::uint32_t kAlpha = std::uint32_t{kOpaque} << 24;
  const std::uint32_t a = LoadWord(source);
  const std::uint32_t b = LoadWord(source + 4);
  const std::uint32_t c = LoadWord(source + 8);
  StoreWord(target, a | kAlpha);
  StoreWord(target + 4, a >> 24 | b << 8 | kAlpha);
  StoreWord(target + 8, b >> 16 | c << 16 | kAlpha);
  StoreWord(target + 12, c >> 8 | kAlpha);
}

void WidenPixel(const unsigned char* source, unsigned char* target) {
  target[0] = source[0];
  target[1] = source[1];
  target[2] = source[2];
  target[3] = kOpaque;
}

}  // namespace

void WidenRow(const unsigned char* source, unsigned char* target, int pixels) {
  for (; pixels >= kGroupPixels; pixels -= kGroupPixels) {
    WidenGroup(source, target);
    source += kGroupSourceBytes;
    target += kGroupTargetBytes;
  }
  for (; pixels > 0; --pixels) {
    WidenPixel(source, target);
    source += kBlockPixelBytes;
    target += kBitmapPixelBytes;
  }
}

}  // namespace zlibvideo
