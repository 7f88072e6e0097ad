#ifndef ZLIBVIDEO_GRID_BITMAPDATABLOCK_H
#define ZLIBVIDEO_GRID_BITMAPDATABLOCK_H

#include <cstdint>

#include "../host/Export.h"
#include "Sizes.h"

/// A cell of the block grid: its geometry, and the bytes that it keeps from message to message. It
/// owns its buffers. They come from the host allocator and only grow. The size of a buffer never
/// exceeds its capacity. All sizes and capacities are in bytes.
///
/// Pixels are 3 bytes, blue, green, red, in rows of `fWidth` × 3 bytes with nothing between them.
/// Rows run upward: the first row of a buffer is the block's bottom row in the picture.
struct ZLIBVIDEO_EXPORT BitmapDataBlock {
  BitmapDataBlock() = default;
  BitmapDataBlock(const BitmapDataBlock&) = delete;
  BitmapDataBlock& operator=(const BitmapDataBlock&) = delete;
  ~BitmapDataBlock();

  /// Sets the block's place in an image of `imageWidth` pixels a row: the number of its first
  /// pixel, its width and its height, all in pixels. The flag is ignored. Buffers are unchanged.
  void Initialize(std::int32_t pixelOffset, std::int32_t width, std::int32_t height,
                  std::int32_t imageWidth, bool flag);

  /// Makes `*buffer` hold at least `size` bytes and fills it from `source`, which must not lie in
  /// that buffer. A null source only makes room: the size field becomes 0. A size of 0 empties a
  /// buffer and keeps it. Returns whether the buffer exists afterwards. False if `size` is below 1
  /// and the buffer did not exist, or if the host had no memory. Then the capacity has no meaning.
  [[nodiscard]] bool SetupData(const unsigned char* source, std::int32_t size,
                               unsigned char** buffer, std::int32_t* sizeField,
                               std::int32_t* capacityField);
  /// `SetupData` for each of the three buffers. `SetRawData` also marks the block as not drawn.
  [[nodiscard]] bool SetRawData(const unsigned char* source, std::int32_t size);
  [[nodiscard]] bool SetPreviousData(const unsigned char* source, std::int32_t size);
  [[nodiscard]] bool SetConvertedData(const unsigned char* source, std::int32_t size);
  /// Bytes of the block's pixels.
  std::int64_t PixelBytes() const {
    return std::int64_t{fWidth} * fHeight * zlibvideo::kBlockPixelBytes;
  }

  /// The block's current pixels. Null until its first payload, which makes the buffer even if the
  /// payload then fails.
  unsigned char* fRawData = nullptr;
  std::int32_t fRawDataSize = 0;
  std::int32_t fRawDataCapacity = 0;
  /// The pixels as the last direct version-2 payload left them: the reference for primed and
  /// banded payloads.
  unsigned char* fPreviousData = nullptr;
  std::int32_t fPreviousDataSize = 0;
  std::int32_t fPreviousDataCapacity = 0;
  /// The stream of the last direct colour-reduced payload: the dictionary of primed colour-reduced
  /// payloads.
  unsigned char* fConvertedData = nullptr;
  std::int32_t fConvertedDataSize = 0;
  std::int32_t fConvertedDataCapacity = 0;
  /// Rows, and pixels a row.
  std::int32_t fHeight = 0;
  std::int32_t fWidth = 0;
  /// Byte offset of the block's bottom-left pixel, and bytes a row, in a packed image of the whole
  /// frame with 3 bytes a pixel, bottom row first.
  std::int32_t fImageOffset = 0;
  std::int32_t fImageStride = 0;
  /// Header bytes of the block's last version-2 record: format, first row and rows of the band.
  std::uint8_t fFormat = 0;
  std::uint8_t fDiffRowStart = 0;
  std::uint8_t fDiffRowCount = 0;
  /// Whether the block was decoded in the current pass over a version-2 message.
  bool fProcessed = false;
  /// Whether the pixels are as they were last drawn.
  bool fDrawn = false;
  /// Whether a version-1 or direct payload has filled the block since the grid was made.
  bool fFilled = false;
};

#endif  // ZLIBVIDEO_GRID_BITMAPDATABLOCK_H
