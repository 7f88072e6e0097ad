#include "tools/record/ReducedColors.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "colour/ReducedCode.h"
#include "grid/Sizes.h"

namespace zlibvideo {
namespace {

constexpr std::size_t kColors15 = std::size_t{1} << 15;

/// A block pixel as a colour 0x00RRGGBB.
std::uint32_t LoadColor(const unsigned char* pixel) {
  return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
}

std::unordered_map<std::uint32_t, std::size_t> CountColors(const Picture& picture) {
  std::unordered_map<std::uint32_t, std::size_t> counts;
  std::uint32_t runColor = 0;
  std::size_t* count = nullptr;  // of the colour of this run of pixels
  for (std::size_t i = 0; i < picture.pixels.size(); i += kBlockPixelBytes) {
    const std::uint32_t color = LoadColor(&picture.pixels[i]);
    if (count == nullptr || color != runColor) count = &counts[color];
    runColor = color;
    ++*count;
  }
  return counts;
}

/// Most frequent first. Colours of the same count in the order of their values, so that a picture
/// always gives the same stream.
std::vector<std::uint32_t> MostFrequentColors(const Picture& picture) {
  const auto counts = CountColors(picture);
  std::vector<std::pair<std::uint32_t, std::size_t>> ranked(counts.begin(), counts.end());
  std::sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) {
    return a.second != b.second ? a.second > b.second : a.first < b.first;
  });
  ranked.resize(std::min<std::size_t>(ranked.size(), kPaletteColors));
  std::vector<std::uint32_t> colors;
  colors.reserve(ranked.size());
  for (const auto& entry : ranked) colors.push_back(entry.first);
  return colors;
}

}  // namespace

ReducedColors::ReducedColors(const Picture& picture)
    : fPalette(MostFrequentColors(picture)), fFirst(kColors15, kNotInPalette) {
  for (const std::uint32_t color : fPalette) {
    std::int16_t& first = fFirst[NarrowToColor15(color)];
    fNext.push_back(std::exchange(first, static_cast<std::int16_t>(fNext.size())));
  }
}

std::vector<unsigned char> ReducedColors::PaletteBytes() const {
  std::vector<unsigned char> bytes;
  bytes.reserve(kPaletteBytes);
  for (const std::uint32_t color : fPalette) {
    for (const int shift : {16, 8, 0}) {
      bytes.push_back(static_cast<unsigned char>(color >> shift & 0xFF));
    }
  }
  bytes.resize(kPaletteBytes);  // entries that no pixel needs are black
  return bytes;
}

int ReducedColors::PaletteIndex(std::uint32_t color) const {
  int index = fFirst[NarrowToColor15(color)];
  while (index != kNotInPalette && fPalette[static_cast<std::size_t>(index)] != color) {
    index = fNext[static_cast<std::size_t>(index)];
  }
  return index;
}

std::uint32_t ReducedColors::Shown(std::uint32_t color) const {
  return PaletteIndex(color) == kNotInPalette ? WidenColor15(NarrowToColor15(color)) : color;
}

void ReducedColors::Reduce(unsigned char* pixels, std::size_t count) const {
  for (std::size_t i = 0; i < count; ++i) {
    unsigned char* const pixel = pixels + i * kBlockPixelBytes;
    StorePixel(pixel, Shown(LoadColor(pixel)));
  }
}

std::vector<unsigned char> ReducedColors::Encode(ByteSpan pixels) const {
  std::vector<unsigned char> codes;
  for (unsigned int i = 0; i < pixels.size; i += kBlockPixelBytes) {
    const std::uint32_t color = LoadColor(pixels.data + i);
    const int index = PaletteIndex(color);
    if (index != kNotInPalette) {
      codes.push_back(static_cast<unsigned char>(index));
      continue;
    }
    const std::uint32_t code = kWideCodeBit << 8 | NarrowToColor15(color);
    codes.push_back(static_cast<unsigned char>(code >> 8));
    codes.push_back(static_cast<unsigned char>(code & 0xFF));
  }
  return codes;
}

}  // namespace zlibvideo
