#ifndef ZLIBVIDEO_GRID_SIZES_H
#define ZLIBVIDEO_GRID_SIZES_H

#include <algorithm>
#include <cstdint>

namespace zlibvideo {

/// Bytes of a block pixel: blue, green, red.
inline constexpr int kBlockPixelBytes = 3;

/// Colours of a palette, and its bytes in a stream: red, green and blue of each colour.
inline constexpr unsigned int kPaletteColors = 128;
inline constexpr unsigned int kPaletteEntryBytes = 3;
inline constexpr unsigned int kPaletteBytes = kPaletteColors * kPaletteEntryBytes;

/// Entries of the table of 15-bit colours.
inline constexpr unsigned int kDecodeTableEntries = 1U << 15;

/// The most bytes that a payload of a block may decompress to: about 3.12 bytes a pixel of the
/// nominal block size, a multiple of 16. A cut block gets the room of a full block.
constexpr std::int32_t ExpandedBlockSize(std::int32_t blockWidth, std::int32_t blockHeight) {
  constexpr std::int64_t kSlack = 64;
  constexpr std::int64_t kMultipleOf16Mask = 0x7FFFFFF0;
  const std::int64_t pixels = std::int64_t{blockWidth} * blockHeight;
  return static_cast<std::int32_t>((pixels * 312 / 100 + kSlack) & kMultipleOf16Mask);
}

/// Bytes of a block's pixel buffer, all of which are offered to decompression.
constexpr std::int32_t RawDataCapacity(std::int32_t blockWidth, std::int32_t blockHeight) {
  constexpr std::int32_t kMinCapacity = 256;
  return std::max(ExpandedBlockSize(blockWidth, blockHeight), kMinCapacity);
}

/// Bytes of the scratch buffer, at least enough for a palette.
constexpr std::int32_t ScratchBufferSize(std::int32_t blockWidth, std::int32_t blockHeight) {
  constexpr std::int32_t kMinScratch = 1024;
  return std::max(ExpandedBlockSize(blockWidth, blockHeight), kMinScratch);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_GRID_SIZES_H
