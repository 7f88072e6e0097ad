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

/// What all messages of one stream share: image and block geometry, the grid of blocks with their
/// pixels, the palette, the 15-bit colour table and a scratch buffer; and the operations that
/// decode a message body into the grid and compose the grid into a bitmap.
///
/// Everything it points to is its own and comes from the host allocator, whose `std::bad_alloc`
/// passes through any operation that may allocate and leaves the object usable. The grid persists
/// from message to message: a block that a message leaves out keeps its pixels, and a failed
/// message is not rolled back. Calls on one object must not overlap.
class ZLIBVIDEO_EXPORT BlockedCodec {
 public:
  BlockedCodec() = default;
  BlockedCodec(const BlockedCodec&) = delete;
  BlockedCodec& operator=(const BlockedCodec&) = delete;

  /// Decompresses one whole zlib buffer. `*destinationLength` is the room of `destination` in
  /// bytes on entry and the bytes produced on return. This version writes nothing, leaves the
  /// length alone and returns false; the decoder overrides it.
  [[nodiscard]] virtual bool DecompressBlock(unsigned char* destination,
                                             unsigned int* destinationLength,
                                             const unsigned char* source,
                                             unsigned int sourceLength);
  virtual ~BlockedCodec();

  /// Objects on the heap live in the host's memory. A host that answers null for one ends the
  /// process: there is no object to report it.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t, void* storage) noexcept { return storage; }
  static void operator delete(void* memory) noexcept;
  static void operator delete(void*, void*) noexcept {}

  // Grid (grid/BlockedCodec.cpp)

  /// Prepares for a message of this geometry, in pixels: images of 1 to 4095, blocks of 1 to 256 a
  /// side. The caller sees to these ranges, they are not checked: a block size of 0 is divided by.
  ///
  /// Keeps everything when nothing changed and a grid exists. Otherwise replaces the grid by one of
  /// empty blocks and drops the scratch buffer; colour table and palette survive.
  ///
  /// False for an image of no pixels, and when the host returned null. Null for the array of
  /// records leaves no grid, and the next call builds it. Null for a record leaves a grid with
  /// records missing: the next call with the same geometry takes it as it is and returns true, and
  /// whatever walks it passes the missing ones over. They stay missing until `DeleteBlocks` or a
  /// change of geometry; then every block must be sent again. Throwing `std::bad_alloc` avoids
  /// this: after it no grid is left, and the next call builds it.
  [[nodiscard]] bool SetupCodec(std::int32_t imageWidth, std::int32_t imageHeight,
                                std::int32_t blockWidth, std::int32_t blockHeight);
  /// Replaces the grid, for the image size stored and the block size given, which must be the one
  /// stored. Result as `SetupCodec`.
  [[nodiscard]] bool SetupBlocks(std::int32_t blockWidth, std::int32_t blockHeight);
  /// Destroys the grid with all buffers of its blocks. The grid's width and height keep their
  /// values.
  void DeleteBlocks();
  /// Number of blocks along an axis of `size` pixels; `*remainder` receives the pixels that the
  /// last block has when it is cut, else 0.
  static std::int32_t CalcGridSize(std::int32_t size, std::int32_t blockSize,
                                   std::int32_t* remainder);
  /// The customary block size for an image of this width or height: 64 pixels, or 128 for one of
  /// more than 511.
  static std::int32_t CalcBlockSize(std::int32_t imageSize);
  /// The block of a grid cell, row 0 being the bottom of the picture; null when its record is
  /// missing. The caller keeps row and column in range and calls only while a grid exists.
  BitmapDataBlock* GetBlock(std::int32_t row, std::int32_t column) const {
    return Cell(row, column);
  }
  /// Forgets which blocks were decoded in the current pass.
  void ClearProcessedFlags();
  /// Makes sure that the scratch buffer exists, if the host has memory for it.
  void CheckScratchColorBuffer();
  /// Writes the low 16 bits of `value`, most significant byte first, to `buffer[offset]` and the
  /// byte after: the form of the sizes in a message body.
  void WriteToBuf2(char* buffer, std::int32_t offset, std::int32_t value);

  // Message body (bitstream/)

  /// Decodes the body of a message, given from its frame header on, into the grid. The header is
  /// passed over, not read: the geometry is that of the last `SetupCodec`, the codec type is the
  /// one given. A type other than 3 and 6 has its records walked and changes no block. `length`
  /// counts the whole message in bytes. Returns the body bytes consumed (version 2: not counting
  /// the flags byte), or -1 when the message fails; blocks decoded before the failure keep their
  /// new contents. Bytes after the last record are not looked at. The last argument is not read.
  [[nodiscard]] int UnpackMessage(unsigned char* message, unsigned int length, char codecType,
                                  char unused);
  /// Decodes one pass, a record for every block of the grid, from the `available` bytes at
  /// `records`. Returns the bytes consumed, or -1. In version 2 a block that is marked as processed
  /// has its record passed over, so `ClearProcessedFlags` comes before a pass; and payloads with a
  /// colour field need the scratch buffer, so `CheckScratchColorBuffer` does too. `UnpackMessage`
  /// sees to both.
  [[nodiscard]] int UnpackBlocks(unsigned char* records, unsigned int available, char codecType);
  /// Reads a palette record and installs what it holds; a palette that cannot be decompressed to
  /// exactly its size leaves the current one. Returns the bytes that the record occupies: 2, and
  /// nothing changes, when it is empty or reaches past `available`; -1 when not even its size is
  /// there. The scratch buffer's size is that of the last `SetupCodec`.
  [[nodiscard]] int UnpackPalette(unsigned char* record, unsigned int available);
  /// Decodes one version-2 payload into `block`, whose header fields are set and whose pixel
  /// buffer has `*length` bytes of room, at least those of the block. Payloads with a colour field
  /// go by way of the scratch buffer, which must exist: without it a direct one fails and an
  /// intermediate one gives nothing. On success, `*length` becomes the bytes that the block then
  /// has, as far as the payload accounts for them, and the block counts as processed; where nothing
  /// was produced, both stay. The whole room counts when the payload is empty (unless its band has
  /// no rows) or its conversion is rejected. False when the block was not decoded: `fRawDataSize`,
  /// `fProcessed` and `*length` are unchanged then, its pixels may be partly written, and where the
  /// host had no memory its reference data may be gone. Two arguments are not read.
  [[nodiscard]] bool UnpackOneV2Block(BitmapDataBlock* block, char unused1, unsigned char* payload,
                                      unsigned int payloadLength, unsigned char* unused2,
                                      unsigned int* length);
  /// The path of primed, banded and otherwise intermediate payloads: decodes into `destination`,
  /// whose room is `*destinationLength` bytes, at least those of the block. The block is only read.
  ///
  /// On success `*destinationLength` becomes the bytes of the rows taken around the band plus those
  /// that the payload gave; for a band of no rows, the size of the previous data. It stays the room
  /// where the payload is empty, unless the band has no rows, and where the conversion of colours
  /// is rejected. Errors in the payload's own compressed data do not make it fail, and bytes behind
  /// the end of that data are accepted.
  ///
  /// False without previous data; when that does not fit the room or does not hold the rows that
  /// are taken from it; when the band does not fit; when a primed payload that is not empty has an
  /// empty dictionary; and when zlib refuses to start, to take the dictionary or to end.
  /// `destination` may then hold the dictionary or all that was decoded, and the length means
  /// nothing. Payloads with a colour field need the scratch buffer.
  [[nodiscard]] bool DecompressIntermediateBlock(unsigned char* destination,
                                                 unsigned int* destinationLength,
                                                 const unsigned char* payload,
                                                 unsigned int payloadLength,
                                                 BitmapDataBlock* block);

  // Colour (colour/)

  /// Creates the 15-bit colour table if it is absent, and fills it.
  void MakeTarvishDecodeTable();
  /// Creates the palette if it is absent. Loads the colours of a record of 384 bytes, red, green,
  /// blue of each, or the default colours when `record` is null.
  void MakeTarvishPalette(unsigned char* record);
  /// Converts a colour-reduced stream to block pixels. `*destinationLength` is the room of
  /// `destination` in bytes on entry and, when the call is accepted, the bytes written on return.
  /// A call is rejected, with nothing written and the length unchanged, when `format` does not ask
  /// for this conversion, when the stream is too long for the room (three halves of its length,
  /// rounded down, exceed it), or when the host had no memory for table or palette. Surplus codes
  /// are dropped, and so is a code cut off by the end. Source and room must not overlap.
  void ConvertImageColorToQuarn24(unsigned char* destination, unsigned int* destinationLength,
                                  unsigned char* source, unsigned int sourceLength,
                                  unsigned char format);

  // Output (output/)

  /// Writes the picture into `bitmap`, not null and at least as large as the picture: rows in
  /// reverse order and opaque. A block is black until it has a buffer; its first payload makes one,
  /// even if that payload then fails. A block whose record is missing leaves its place in the
  /// bitmap alone. Does nothing to a bitmap that is not addressable. The grid is only read. An
  /// exception of the host's from within leaves the bitmap locked.
  void PushFrame(SBitmapCore* bitmap);
  /// Writes the blocks whose pixels were touched since `PushFrame` or `PushChanges` last drew them,
  /// by messages that failed as well, and all blocks of a new grid; each as `PushFrame` does. For a
  /// `bitmap` that still holds the picture drawn last, after a message that succeeded: a failed
  /// message may have changed the size of the picture and not that of the bitmap. If the bitmap is
  /// another, has lost its pixels, or `PushFrame` was left by an exception, call `PushFrame`.
  ///
  /// Returns the least rectangle around the blocks written, in pixels of the bitmap, and calls
  /// `UpdateMipMap` with it. If nothing was touched, or the bitmap is not addressable, calls
  /// nothing and returns an empty rectangle, all 0. An exception of the host's from within leaves
  /// the bitmap locked; the next call writes the same blocks again.
  SRECT PushChanges(SBitmapCore* bitmap);
  /// Whether the picture has no gaps: a grid exists, no record is missing, and a payload has filled
  /// each block since the grid was made. A decoder that begins in the middle of a stream decodes
  /// messages with success before this holds. Later payloads that fail or end early do not undo it.
  bool IsComplete() const;

  /// The palette that a stream begins with: 0x00RRGGBB.
  // NOLINTNEXTLINE(readability-identifier-naming): a field by name, constant or not
  static const std::uint32_t fDefaultTarvishPalette[zlibvideo::kPaletteColors];

 protected:
  /// 32768 colours 0x00RRGGBB by 15-bit colour; null until first needed, kept for good.
  std::uint32_t* fDecodeTable = nullptr;
  /// 128 colours 0x00RRGGBB; null until first needed, kept for good.
  std::uint32_t* fPalette = nullptr;
  /// Takes a decompressed palette or colour-reduced stream; null until first needed for a geometry.
  unsigned char* fScratchColorBuffer = nullptr;
  std::int32_t fScratchColorBufferSize = 0;
  /// Pixels.
  std::int32_t fImageWidth = 0;
  std::int32_t fImageHeight = 0;
  /// Blocks.
  std::int32_t fGridWidth = 0;
  std::int32_t fGridHeight = 0;
  /// Pixels; the last column and the last row of blocks may be cut.
  std::int32_t fBlockWidth = 64;
  std::int32_t fBlockHeight = 64;
  /// `fGridHeight` rows of `fGridWidth` records, row 0 at the bottom of the picture. Null when
  /// there is no grid; single entries are null when the host had no memory for them.
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

  // Message body; `capacity` is the room in bytes that every block's pixels get
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
