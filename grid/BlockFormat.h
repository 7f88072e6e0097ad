#ifndef ZLIBVIDEO_GRID_BLOCKFORMAT_H
#define ZLIBVIDEO_GRID_BLOCKFORMAT_H

namespace zlibvideo {

/// Bits of a version-2 block's format byte (`BitmapDataBlock::fFormat`). Bits 5-7 are not read.

/// The payload is a raw deflate stream (RFC 1951) that continues after a dictionary.
inline constexpr unsigned int kFormatPrimed = 0x01;
/// The payload is decoded without replacing the block's reference data.
inline constexpr unsigned int kFormatIntermediate = 0x02;
/// The payload holds only a band of rows. Two band bytes precede it in the record.
inline constexpr unsigned int kFormatDiffRows = 0x04;
/// Any of these bits sends a block down the intermediate path. Without them the block is direct.
inline constexpr unsigned int kFormatIntermediatePathMask =
    kFormatPrimed | kFormatIntermediate | kFormatDiffRows;
/// The colour field: 0 for 3-byte pixels, `kFormatColorReduced` for a colour-reduced stream. Other
/// values are carried like the latter, but no conversion accepts them.
inline constexpr unsigned int kFormatColorMask = 0x18;
inline constexpr unsigned int kFormatColorReduced = 0x10;

constexpr bool IsDirect(unsigned int format) {
  return (format & kFormatIntermediatePathMask) == 0;
}
constexpr bool IsPrimed(unsigned int format) {
  return (format & kFormatPrimed) != 0;
}
constexpr bool HasBand(unsigned int format) {
  return (format & kFormatDiffRows) != 0;
}
/// Whether the payload's pixels are anything but 3-byte pixels.
constexpr bool HasColorField(unsigned int format) {
  return (format & kFormatColorMask) != 0;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_GRID_BLOCKFORMAT_H
