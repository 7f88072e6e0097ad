// The C interface: a decoder that draws into a bitmap of its own.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "bitstream/MemoryBound.h"
#include "capi/Host.h"
#include "capi/zlibvideo.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "host/BitmapPixel.h"

using zlibvideo::ByteCursor;
using zlibvideo::FrameHeader;

// `zlibvideo_open` allocates its memory. Without memory, the decoder's own operator `new` would end
// the process.
struct zlibvideo_decoder final : ZLibVideoDecompressor {
  explicit zlibvideo_decoder(std::size_t memoryLimit)
      : ZLibVideoDecompressor(nullptr, nullptr), fMemoryLimit(memoryLimit) {}
  ~zlibvideo_decoder() override { std::free(fChangedBlocks); }

  bool Decode(const unsigned char* message, std::size_t length);
  /// `zlibvideo_memory_bound`. `*header` receives the header of the message.
  std::size_t Bound(const unsigned char* message, std::size_t length, FrameHeader* header) const;

  zlibvideo_picture fPicture = {};

 private:
  bool Prepare(const FrameHeader& header);
  bool Draw();
  bool ListChangedBlocks();

  std::size_t fMemoryLimit;
  zlibvideo::PictureBitmap fBitmap;
  zlibvideo_area* fChangedBlocks = nullptr;
  std::size_t fChangedRoom = 0;  // areas
  /// Blocks keep their buffers of version 2 when the stream changes to version 1.
  bool fHoldsVersion2 = false;
};

std::size_t zlibvideo_decoder::Bound(const unsigned char* message, std::size_t length,
                                     FrameHeader* header) const {
  if (length < FrameHeader::kMinMessageSize) return 0;
  ByteCursor cursor(message, FrameHeader::kSize);
  if (!FrameHeader::Read(&cursor, header) || !header->IsValid()) return 0;
  FrameHeader bounded = *header;
  if (fHoldsVersion2) bounded.codecType = zlibvideo::kCodecTypeVersion2;
  std::int32_t remainder = 0;
  const int blocks = CalcGridSize(header->imageWidth, header->blockWidth, &remainder) *
                     CalcGridSize(header->imageHeight, header->blockHeight, &remainder);
  // The last picture is kept until the message succeeds, and the room for areas never shrinks.
  const int pixels =
      std::max(header->imageWidth * header->imageHeight, fBitmap.GetWidth() * fBitmap.GetHeight());
  const auto areas = std::max(static_cast<std::size_t>(blocks), fChangedRoom);
  return static_cast<std::size_t>(zlibvideo::MemoryBound(bounded)) +
         areas * sizeof(zlibvideo_area) +
         static_cast<std::size_t>(pixels) * zlibvideo::kBitmapPixelBytes;
}

bool zlibvideo_decoder::Decode(const unsigned char* message, std::size_t length) {
  fPicture.changed_count = 0;
  fPicture.changed = {};
  FrameHeader header;
  const std::size_t bound = Bound(message, length, &header);
  if (bound == 0 || bound > fMemoryLimit || length > UINT32_MAX || !Prepare(header)) return false;
  // The decoder only reads the message. Without memory, some payloads are skipped.
  auto* bytes = const_cast<unsigned char*>(message);
  const bool decoded = DecompressVideo(nullptr, bytes, static_cast<unsigned long>(length), true);
  return !zlibvideo::MemoryRanOut() && decoded && Draw();
}

bool zlibvideo_decoder::Prepare(const FrameHeader& header) {
  if (header.codecType == zlibvideo::kCodecTypeVersion2) fHoldsVersion2 = true;
  if (SetupCodec(header.imageWidth, header.imageHeight, header.blockWidth, header.blockHeight)) {
    return true;
  }
  // The next message would accept a grid with missing records.
  DeleteBlocks();
  static_cast<void>(zlibvideo::MemoryRanOut());
  return false;
}

bool zlibvideo_decoder::Draw() {
  const bool resized = fBitmap.GetWidth() != fImageWidth || fBitmap.GetHeight() != fImageHeight;
  if ((resized && !fBitmap.Resize(fImageWidth, fImageHeight)) || !ListChangedBlocks()) {
    fPicture = {};
    return false;
  }
  const SRECT area = PushChanges(&fBitmap);
  fPicture.pixels = fBitmap.GetBMBaseAddr();
  fPicture.row_length = static_cast<std::size_t>(fBitmap.GetRowLength());
  fPicture.width = fImageWidth;
  fPicture.height = fImageHeight;
  fPicture.block_width = fBlockWidth;
  fPicture.block_height = fBlockHeight;
  fPicture.complete = IsComplete() ? 1 : 0;
  fPicture.changed = {area.xMin, area.yMin, area.xMax - area.xMin, area.yMax - area.yMin};
  return true;
}

bool zlibvideo_decoder::ListChangedBlocks() {
  const auto blocks = static_cast<std::size_t>(fGridWidth) * static_cast<std::size_t>(fGridHeight);
  if (blocks > fChangedRoom) {
    std::free(fChangedBlocks);
    fChangedBlocks = static_cast<zlibvideo_area*>(std::calloc(blocks, sizeof(zlibvideo_area)));
    fChangedRoom = fChangedBlocks == nullptr ? 0 : blocks;
  }
  if (fChangedRoom == 0) return false;
  fPicture.changed_blocks = fChangedBlocks;
  for (std::int32_t row = 0; row < fGridHeight; ++row) {
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      const BitmapDataBlock& block = *GetBlock(row, column);
      if (block.fDrawn) continue;
      const std::int32_t top = fImageHeight - row * fBlockHeight - block.fHeight;
      fChangedBlocks[fPicture.changed_count++] = {column * fBlockWidth, top, block.fWidth,
                                                  block.fHeight};
    }
  }
  return true;
}

zlibvideo_decoder* zlibvideo_open(std::size_t memory_limit) {
  void* storage = std::calloc(1, sizeof(zlibvideo_decoder));
  return storage == nullptr ? nullptr : new (storage) zlibvideo_decoder(memory_limit);
}

void zlibvideo_close(zlibvideo_decoder* decoder) {
  if (decoder == nullptr) return;
  decoder->~zlibvideo_decoder();
  std::free(decoder);
}

int zlibvideo_decode(zlibvideo_decoder* decoder, const void* message, std::size_t length) {
  return decoder->Decode(static_cast<const unsigned char*>(message), length) ? 1 : 0;
}

const zlibvideo_picture* zlibvideo_get_picture(const zlibvideo_decoder* decoder) {
  return &decoder->fPicture;
}

std::size_t zlibvideo_memory_bound(const zlibvideo_decoder* decoder, const void* message,
                                   std::size_t length) {
  FrameHeader header;
  return decoder->Bound(static_cast<const unsigned char*>(message), length, &header);
}

const char* zlibvideo_version() {
  return zlibvideo::LibraryVersion();
}
