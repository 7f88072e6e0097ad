// Conversion of a colour-reduced stream. Its length is known and each loop over it says how it
// stays within it, so the bytes are walked directly, without a cursor's test for each.

#include <cstdint>

#include "colour/ReducedCode.h"
#include "colour/RunConverter.h"
#include "grid/BlockFormat.h"
#include "grid/BlockedCodec.h"
#include "grid/Sizes.h"

namespace {

using zlibvideo::Color15;
using zlibvideo::IsIndex;
using zlibvideo::kBlockPixelBytes;
using zlibvideo::kIndexBytes;
using zlibvideo::kWideCodeBytes;
using zlibvideo::RestOfStream;
using zlibvideo::StorePixel;

/// Whether the room holds the pixels of a stream made only of 2-byte codes. The bound is computed
/// in 32 bits, as encoders compute it. That it wraps for a source of more than
/// a gigabyte is harmless, since conversion stays within the room by itself.
bool RoomSuffices(unsigned int sourceLength, unsigned int room) {
  constexpr std::uint64_t kLow32Bits = 0xFFFFFFFF;
  const std::uint64_t product = std::uint64_t{sourceLength} * kBlockPixelBytes & kLow32Bits;
  return product / kWideCodeBytes <= room;
}

/// Converts until source or room is used up. Returns the end of the bytes written.
unsigned char* ConvertCodes(RestOfStream rest, const std::uint32_t* palette,
                            const std::uint32_t* colors) {
  auto [source, sourceEnd, target, targetEnd] = rest;
  while (source != sourceEnd && targetEnd - target >= kBlockPixelBytes) {
    if (IsIndex(source)) {
      StorePixel(target, palette[*source]);
      source += kIndexBytes;
    } else {
      if (sourceEnd - source < kWideCodeBytes) break;  // a code cut off by the end is dropped
      StorePixel(target, colors[Color15(source)]);
      source += kWideCodeBytes;
    }
    target += kBlockPixelBytes;
  }
  return target;
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
  const RestOfStream all = {source, source + sourceLength, destination,
                            destination + *destinationLength};
  const RestOfStream rest = zlibvideo::FastestRunConverter()(all, fPalette, fDecodeTable);
  const unsigned char* end = ConvertCodes(rest, fPalette, fDecodeTable);
  *destinationLength = static_cast<unsigned int>(end - destination);
}
