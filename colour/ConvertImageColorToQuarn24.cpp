// Conversion of a colour-reduced stream: a byte below 0x80 is a palette index, any other begins a
// 2-byte code that holds a 15-bit colour.

#include <cstdint>

#include "bitstream/BlockFormat.h"
#include "grid/BlockedCodec.h"
#include "grid/BufferSizes.h"

namespace {

constexpr unsigned int kWideCodeBit = 0x80;

void StorePixel(unsigned char* pixel, std::uint32_t color) {
  pixel[0] = static_cast<unsigned char>(color & 0xFF);
  pixel[1] = static_cast<unsigned char>(color >> 8 & 0xFF);
  pixel[2] = static_cast<unsigned char>(color >> 16 & 0xFF);
}

/// Whether the room holds at least what a stream made only of 2-byte codes would yield.
bool RoomSuffices(unsigned int sourceLength, unsigned int room) {
  constexpr std::uint64_t kLow32Bits = 0xFFFFFFFF;
  const std::uint64_t product = std::uint64_t{sourceLength} * 3 & kLow32Bits;
  return product >> 1 <= room;
}

/// Converts until source or room is used up; returns the bytes written.
unsigned int ConvertCodes(const unsigned char* source, unsigned int sourceLength,
                          unsigned char* destination, unsigned int room,
                          const std::uint32_t* palette, const std::uint32_t* colors) {
  constexpr auto kPixelBytes = static_cast<unsigned int>(zlibvideo::kBlockPixelBytes);
  const unsigned char* const end = source + sourceLength;
  unsigned int written = 0;
  while (source != end && room - written >= kPixelBytes) {
    const unsigned int first = *source++;
    if (first < kWideCodeBit) {
      StorePixel(destination + written, palette[first]);
    } else {
      if (source == end) break;  // a code cut off by the end is dropped
      StorePixel(destination + written, colors[(first & 0x7F) << 8 | *source++]);
    }
    written += kPixelBytes;
  }
  return written;
}

}  // namespace

void BlockedCodec::ConvertImageColorToQuarn24(unsigned char* destination,
                                              unsigned int* destinationLength,
                                              unsigned char* source, unsigned int sourceLength,
                                              unsigned char format) {
  if ((format & zlibvideo::kFormatColorMask) != zlibvideo::kFormatColorReduced) return;
  if (!RoomSuffices(sourceLength, *destinationLength)) return;
  if (fDecodeTable == nullptr) MakeTarvishDecodeTable();
  if (fPalette == nullptr) MakeTarvishPalette(nullptr);
  if (fDecodeTable == nullptr || fPalette == nullptr) return;
  *destinationLength =
      ConvertCodes(source, sourceLength, destination, *destinationLength, fPalette, fDecodeTable);
}
