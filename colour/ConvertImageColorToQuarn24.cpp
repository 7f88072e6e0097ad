// Conversion of a colour-reduced stream. Its length is known and each loop below says how it stays
// within it, so the bytes are walked directly, without a cursor's test for each.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "colour/ReducedCode.h"
#include "grid/BlockFormat.h"
#include "grid/BlockedCodec.h"
#include "grid/BufferSizes.h"

namespace {

using zlibvideo::kBlockPixelBytes;
using zlibvideo::kIndexBytes;
using zlibvideo::kWideCodeBit;
using zlibvideo::kWideCodeBytes;

void StorePixel(unsigned char* pixel, std::uint32_t color) {
  pixel[0] = static_cast<unsigned char>(color & 0xFF);
  pixel[1] = static_cast<unsigned char>(color >> 8 & 0xFF);
  pixel[2] = static_cast<unsigned char>(color >> 16 & 0xFF);
}

/// Whether the room holds at least what a stream made only of 2-byte codes would yield. The bound
/// is formed in 32 bits, as those who make streams form it; that it wraps for a source of more than
/// a gigabyte is harmless, since conversion stays within the room by itself.
bool RoomSuffices(unsigned int sourceLength, unsigned int room) {
  constexpr std::uint64_t kLow32Bits = 0xFFFFFFFF;
  const std::uint64_t product = std::uint64_t{sourceLength} * kBlockPixelBytes & kLow32Bits;
  return product / kWideCodeBytes <= room;
}

/// `StorePixel` that may also write the byte after the pixel: one store instead of three. Only for
/// pixels that another one is sure to follow: after the last pixel of a band, that byte belongs to
/// the row after it.
void StorePixelLoosely(unsigned char* pixel, std::uint32_t color) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(pixel, &color, sizeof(color));
  } else {
    StorePixel(pixel, color);
  }
}

bool IsIndex(const unsigned char* code) {
  return *code < kWideCodeBit;
}

unsigned int Color15(const unsigned char* code) {
  return (code[0] & (kWideCodeBit - 1)) << 8 | code[1];
}

/// What is left to convert, and where it goes.
struct Rest {
  const unsigned char* source;
  const unsigned char* sourceEnd;
  unsigned char* target;
  unsigned char* targetEnd;
};

/// Converts most of a stream. Codes of a kind come in runs, so they are taken in turns, some
/// indices and then some colours, with no test for the end of source or room in between; that is
/// two to three times as fast as code by code. Stops where a turn may no longer fit.
Rest ConvertRuns(Rest rest, const std::uint32_t* palette, const std::uint32_t* colors) {
  constexpr std::ptrdiff_t kMaxRun = 8;
  // A turn, and one more code, the pixel of which must follow those of the turn.
  constexpr std::ptrdiff_t kTurnSource = kMaxRun * (kIndexBytes + kWideCodeBytes) + kWideCodeBytes;
  constexpr std::ptrdiff_t kTurnTarget = (kMaxRun + kMaxRun + 1) * kBlockPixelBytes;
  auto [source, sourceEnd, target, targetEnd] = rest;
  // NOLINTNEXTLINE(bugprone-infinite-loop): it does not see that bindings change
  while (sourceEnd - source >= kTurnSource && targetEnd - target >= kTurnTarget) {
    std::ptrdiff_t run = 0;
    for (; run < kMaxRun && IsIndex(source + run); ++run) {
      StorePixelLoosely(target + run * kBlockPixelBytes, palette[source[run]]);
    }
    source += run;
    target += run * kBlockPixelBytes;
    for (run = 0; run < kMaxRun && !IsIndex(source + run * kWideCodeBytes); ++run) {
      StorePixelLoosely(target + run * kBlockPixelBytes,
                        colors[Color15(source + run * kWideCodeBytes)]);
    }
    source += run * kWideCodeBytes;
    target += run * kBlockPixelBytes;
  }
  return {source, sourceEnd, target, targetEnd};
}

/// Converts until source or room is used up; returns the end of what was written.
unsigned char* ConvertCodes(Rest rest, const std::uint32_t* palette, const std::uint32_t* colors) {
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
  const Rest all = {source, source + sourceLength, destination, destination + *destinationLength};
  const Rest rest = ConvertRuns(all, fPalette, fDecodeTable);
  const unsigned char* end = ConvertCodes(rest, fPalette, fDecodeTable);
  *destinationLength = static_cast<unsigned int>(end - destination);
}
