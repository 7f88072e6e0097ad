#ifndef ZLIBVIDEO_GRID_BLOCKEDCODEC_H
#define ZLIBVIDEO_GRID_BLOCKEDCODEC_H

#include <cstddef>
#include <cstdint>

#include "../host/Export.h"
#include "BitmapDataBlock.h"
#include "Sizes.h"

class SBitmapCore;
struct SRECT;

namespace zlibvideo {
struct BlockRecord;
struct ByteSpan;
}  // namespace zlibvideo

/// The state that all messages of a stream share: image and block geometry, the grid of blocks with
/// their pixels, the palette, the 15-bit colour table and a scratch buffer. Its operations decode a
/// message body into the grid and draw the grid into a bitmap.
///
/// It owns all its buffers. They come from the host allocator, whose `std::bad_alloc` passes
/// through any operation that may allocate and leaves the object usable. The grid persists from
/// message to message: a block that a message leaves out keeps its pixels, and a failed message is
/// not rolled back. Calls on an object must not overlap.
class ZLIBVIDEO_EXPORT BlockedCodec {
 public:
  BlockedCodec() = default;
  BlockedCodec(const BlockedCodec&) = delete;
  BlockedCodec& operator=(const BlockedCodec&) = delete;

  /// Decompresses a whole zlib buffer. `*destinationLength` is the room of `destination` in bytes
  /// on entry and the bytes produced on return. This version writes nothing, leaves the length
  /// alone and returns false. The decoder overrides it.
  [[nodiscard]] virtual bool DecompressBlock(unsigned char* destination,
                                             unsigned int* destinationLength,
                                             const unsigned char* source,
                                             unsigned int sourceLength);
  virtual ~BlockedCodec();

  /// Objects on the heap are in the host's memory. If the host returns null for an object, the
  /// process ends.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t, void* storage) noexcept { return storage; }
  static void operator delete(void* memory) noexcept;
  static void operator delete(void*, void*) noexcept {}

  // Grid (grid/BlockedCodec.cpp)

  /// Prepares for a message of this geometry, in pixels: images of 1 to 4095, blocks of 1 to 256 a
  /// side. Ranges are not checked. A block size of 0 divides by zero.
  ///
  /// If the geometry is unchanged and a grid exists, changes nothing. Otherwise replaces the grid
  /// by a grid of empty blocks and releases the scratch buffer. Colour table and palette persist.
  ///
  /// False for an image of no pixels, and if the host returned null. Null for the array of records
  /// leaves no grid, and the next call builds it. Null for a record leaves a grid with records
  /// missing. The next call with the same geometry accepts this grid and returns true, and all
  /// operations skip the missing records until `DeleteBlocks` or a change of geometry. Then every
  /// block must be sent again. Throw `std::bad_alloc` rather than return null: no grid is left
  /// then, and the next call builds it.
  [[nodiscard]] bool SetupCodec(std::int32_t imageWidth, std::int32_t imageHeight,
                                std::int32_t blockWidth, std::int32_t blockHeight);
  /// Replaces the grid, for the stored image size and the stored block size, which the arguments
  /// must equal. Result as `SetupCodec`.
  [[nodiscard]] bool SetupBlocks(std::int32_t blockWidth, std::int32_t blockHeight);
  /// Destroys the grid with all buffers of its blocks. The grid's width and height keep their
  /// values.
  void DeleteBlocks();
  /// Number of blocks along an axis of `size` pixels. `*remainder` receives the pixels of the last
  /// block if it is cut, else 0.
  static std::int32_t CalcGridSize(std::int32_t size, std::int32_t blockSize,
                                   std::int32_t* remainder);
  /// The customary block size for an image of this width or height: 128 pixels above 511, else 64.
  static std::int32_t CalcBlockSize(std::int32_t imageSize);
  /// The block of a grid cell. Row 0 is the bottom of the picture. Null if the record is missing.
  /// Ranges are not checked, and a grid must exist.
  BitmapDataBlock* GetBlock(std::int32_t row, std::int32_t column) const {
    return Cell(row, column);
  }
  /// Marks all blocks as not decoded in the current pass.
  void ClearProcessedFlags();
  /// Creates the scratch buffer if it is absent and the host has memory.
  void CheckScratchColorBuffer();
  /// Writes the low 16 bits of `value`, most significant byte first, to `buffer[offset]` and the
  /// next byte: the form of sizes in a message body.
  void WriteToBuf2(char* buffer, std::int32_t offset, std::int32_t value);

  // Message body (bitstream/)

  /// Decodes the body of a message into the grid. `message` begins with the frame header, which is
  /// skipped: the geometry is from the last `SetupCodec`. `length` counts the whole message in
  /// bytes. A codec type other than 3 and 6 changes no block. Returns the body bytes consumed, in
  /// version 2 without the flags byte, or -1 if the message fails. Blocks decoded before the
  /// failure keep their new contents. Bytes after the last record are ignored. The last argument is
  /// not read.
  [[nodiscard]] int UnpackMessage(unsigned char* message, unsigned int length, char codecType,
                                  char unused);
  /// Decodes a pass, with a record for every block of the grid, from the `available` bytes at
  /// `records`. Returns the bytes consumed, or -1. In version 2, call `ClearProcessedFlags` before:
  /// the record of a processed block is skipped. Call `CheckScratchColorBuffer` before: payloads
  /// with a colour field need the scratch buffer. `UnpackMessage` calls both.
  [[nodiscard]] int UnpackBlocks(unsigned char* records, unsigned int available, char codecType);
  /// Reads a palette record and installs its palette. A palette that does not decompress to exactly
  /// its size leaves the current palette. Returns the bytes of the record. Returns 2 and changes
  /// nothing if the record is empty or reaches past `available`. Returns -1 if even its size is
  /// missing. The size of the scratch buffer is from the last `SetupCodec`.
  [[nodiscard]] int UnpackPalette(unsigned char* record, unsigned int available);
  /// Decodes a version-2 payload into `block`, whose header fields are set and whose pixel buffer
  /// has `*length` bytes of room, at least the bytes of the block. A payload with a colour field
  /// needs the scratch buffer: without it, a direct payload fails and an intermediate payload
  /// produces nothing.
  ///
  /// On success, `*length` becomes the bytes that the payload accounts for, and the block counts as
  /// processed. If nothing was produced, both are unchanged. The whole room counts if the payload
  /// is empty, unless its band has no rows, and if the conversion is rejected.
  ///
  /// False if the block was not decoded. `fRawDataSize`, `fProcessed` and `*length` are unchanged
  /// then. Pixels may be partly written, and if the host had no memory, reference data may be lost.
  /// Two arguments are not read.
  [[nodiscard]] bool UnpackOneV2Block(BitmapDataBlock* block, char unused1, unsigned char* payload,
                                      unsigned int payloadLength, unsigned char* unused2,
                                      unsigned int* length);
  /// Decodes primed, banded and other intermediate payloads into `destination`, whose room is
  /// `*destinationLength` bytes, at least the bytes of the block. The block is only read. Payloads
  /// with a colour field need the scratch buffer.
  ///
  /// On success, `*destinationLength` becomes the bytes of the rows copied around the band plus the
  /// bytes of the payload or, for a band of no rows, the size of the previous data. It stays the
  /// room if the payload is empty, unless the band has no rows, and if the conversion is rejected.
  /// Errors in the payload's compressed data do not fail the call, and bytes behind the end of that
  /// data are ignored.
  ///
  /// False without previous data. False if the previous data exceeds the room or misses rows to
  /// copy, if the band does not fit, if the dictionary of a primed payload is empty, and if zlib
  /// fails to start, to read the dictionary or to end. Then `destination` may hold the dictionary
  /// or decoded bytes, and the length has no meaning.
  [[nodiscard]] bool DecompressIntermediateBlock(unsigned char* destination,
                                                 unsigned int* destinationLength,
                                                 const unsigned char* payload,
                                                 unsigned int payloadLength,
                                                 BitmapDataBlock* block);

  // Colour (colour/)

  /// Creates the 15-bit colour table if it is absent, and fills it.
  void MakeTarvishDecodeTable();
  /// Creates the palette if it is absent. Loads the colours of a record of 384 bytes (red, green
  /// and blue of each), or the default colours if `record` is null.
  void MakeTarvishPalette(unsigned char* record);
  /// Converts a colour-reduced stream to block pixels. `*destinationLength` is the room of
  /// `destination` in bytes on entry and the bytes written on return. The call is rejected if
  /// `format` does not announce this conversion, if three halves of the stream's length, rounded
  /// down, exceed the room, or if the host has no memory for table or palette. A rejected call
  /// writes nothing and leaves the length unchanged. Surplus codes, and a code cut off by the end,
  /// are dropped. Source and destination must not overlap.
  void ConvertImageColorToQuarn24(unsigned char* destination, unsigned int* destinationLength,
                                  unsigned char* source, unsigned int sourceLength,
                                  unsigned char format);

  // Output (output/)

  /// Writes the picture into `bitmap`, not null and at least as large as the picture: rows in
  /// reverse order and opaque. A block without a buffer is black. Its first payload makes the
  /// buffer, even if that payload fails. A missing record leaves its area of the bitmap alone. Does
  /// nothing if the bitmap is not addressable. An exception of the host leaves the bitmap locked.
  void PushFrame(SBitmapCore* bitmap);
  /// Writes the blocks that messages, failed messages included, touched since the last `PushFrame`
  /// or `PushChanges`, and all blocks of a new grid, each as `PushFrame` does. `bitmap` must still
  /// hold the picture drawn last. Call it after a message that succeeded: a failed message may have
  /// changed the size of the picture without the bitmap. If the bitmap is another bitmap, lost its
  /// pixels, or an exception left `PushFrame`, call `PushFrame`.
  ///
  /// Returns the least rectangle around the blocks written, in pixels of the bitmap, and passes it
  /// to `UpdateMipMap`. If no block was touched, or the bitmap is not addressable, calls nothing
  /// and returns an empty rectangle, all 0. An exception of the host leaves the bitmap locked, and,
  /// unless `UnlockBits` threw it, the next call writes the same blocks again.
  SRECT PushChanges(SBitmapCore* bitmap);
  /// Whether the picture has no gaps: a grid exists, no record is missing, and a version-1 or
  /// direct payload has filled each block since the grid was made. If a decoder begins in the
  /// middle of a stream, messages succeed before this holds. Later payloads that fail or end early
  /// do not undo it.
  bool IsComplete() const;

  /// The palette that a stream begins with: 0x00RRGGBB.
  // NOLINTNEXTLINE(readability-identifier-naming): a field by name, constant or not
  static const std::uint32_t fDefaultTarvishPalette[zlibvideo::kPaletteColors];

 protected:
  /// 32768 colours 0x00RRGGBB by 15-bit colour. Null until first needed, then kept.
  std::uint32_t* fDecodeTable = nullptr;
  /// 128 colours 0x00RRGGBB. Null until first needed, then kept.
  std::uint32_t* fPalette = nullptr;
  /// Receives a decompressed palette or colour-reduced stream. Null until first needed for a
  /// geometry.
  unsigned char* fScratchColorBuffer = nullptr;
  std::int32_t fScratchColorBufferSize = 0;
  /// Pixels.
  std::int32_t fImageWidth = 0;
  std::int32_t fImageHeight = 0;
  /// Blocks.
  std::int32_t fGridWidth = 0;
  std::int32_t fGridHeight = 0;
  /// Pixels. The last column and the last row of blocks may be cut.
  std::int32_t fBlockWidth = 64;
  std::int32_t fBlockHeight = 64;
  /// `fGridHeight` rows of `fGridWidth` records, row 0 at the bottom of the picture. Null without a
  /// grid. A single entry is null if the host had no memory for the record.
  BitmapDataBlock** fBlocks = nullptr;

 private:
  ZLIBVIDEO_HIDDEN BitmapDataBlock*& Cell(std::int32_t row, std::int32_t column) const {
    return fBlocks[static_cast<std::ptrdiff_t>(row) * fGridWidth + column];
  }

  // Grid
  ZLIBVIDEO_HIDDEN bool AllocateGrid();
  ZLIBVIDEO_HIDDEN bool MakeBlocks(std::int32_t blockWidth, std::int32_t blockHeight,
                                   std::int32_t lastWidth, std::int32_t lastHeight);
  ZLIBVIDEO_HIDDEN bool MakeBlock(std::int32_t row, std::int32_t column, std::int32_t width,
                                  std::int32_t height);

  // Message body. `capacity` is the room in bytes for the pixels of every block.
  ZLIBVIDEO_HIDDEN void PrepareForVersion2();
  ZLIBVIDEO_HIDDEN bool UnpackBlock(BitmapDataBlock* block, std::int32_t capacity, int codecType,
                                    const zlibvideo::BlockRecord& record);
  ZLIBVIDEO_HIDDEN bool UnpackVersion1Block(BitmapDataBlock* block, std::int32_t capacity,
                                            zlibvideo::ByteSpan payload);
  ZLIBVIDEO_HIDDEN bool UnpackVersion2Block(BitmapDataBlock* block, std::int32_t capacity,
                                            const zlibvideo::BlockRecord& record);
  ZLIBVIDEO_HIDDEN bool DecompressDirectBlock(BitmapDataBlock* block, const unsigned char* payload,
                                              unsigned int payloadLength, unsigned int* length);

  // Output
  template <typename Visit>
  ZLIBVIDEO_HIDDEN void ForEachBlock(const Visit& visit) const;
  ZLIBVIDEO_HIDDEN std::int32_t GridRowHeight(std::int32_t row) const;
  ZLIBVIDEO_HIDDEN SRECT ChangedArea() const;
  ZLIBVIDEO_HIDDEN void DrawBlocks(SBitmapCore* bitmap, bool all) const;
  ZLIBVIDEO_HIDDEN void MarkDrawn();
};

#endif  // ZLIBVIDEO_GRID_BLOCKEDCODEC_H
