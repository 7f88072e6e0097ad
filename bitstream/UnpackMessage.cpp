// The walk over a message body: palette record, passes, and a record for each block.

#include <cstdint>
#include <limits>

#include "bitstream/ByteCursor.h"
#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "grid/BlockedCodec.h"
#include "grid/Sizes.h"

using zlibvideo::BlockRecord;
using zlibvideo::ByteCursor;
using zlibvideo::ByteSpan;
using zlibvideo::Writable;

namespace {

constexpr int kUnpackFailed = -1;

/// A byte count as the unpacking operations return it. Only a message of more than 2 GiB can
/// consume more bytes than an `int` holds.
int ConsumedResult(std::uint64_t bytes) {
  return bytes > std::numeric_limits<int>::max() ? kUnpackFailed : static_cast<int>(bytes);
}

}  // namespace

int BlockedCodec::UnpackMessage(unsigned char* message, unsigned int length, char codecType,
                                char /*unused*/) {
  ByteCursor cursor(message, length);
  if (!cursor.Skip(zlibvideo::FrameHeader::kSize)) return kUnpackFailed;
  if (codecType != zlibvideo::kCodecTypeVersion2) {
    return UnpackBlocks(Writable(cursor.Rest().data), cursor.Remaining(), codecType);
  }

  PrepareForVersion2();
  std::uint8_t flags = 0;
  if (!cursor.ReadU8(&flags)) return kUnpackFailed;

  const unsigned int bodySize = cursor.Remaining();
  if ((flags & zlibvideo::kFlagPalette) != 0) {
    const int paletteBytes = UnpackPalette(Writable(cursor.Rest().data), cursor.Remaining());
    if (paletteBytes < 0 || !cursor.Skip(static_cast<unsigned int>(paletteBytes))) {
      return kUnpackFailed;
    }
  }

  const int first = UnpackBlocks(Writable(cursor.Rest().data), cursor.Remaining(), codecType);
  if (first <= 0 || !cursor.Skip(static_cast<unsigned int>(first))) return kUnpackFailed;
  if ((flags & zlibvideo::kFlagSecondPass) == 0 || cursor.Remaining() == 0) {
    return ConsumedResult(bodySize - cursor.Remaining());
  }

  ClearProcessedFlags();
  const int second = UnpackBlocks(Writable(cursor.Rest().data), cursor.Remaining(), codecType);
  if (second < 0 || !cursor.Skip(static_cast<unsigned int>(second))) return kUnpackFailed;
  return ConsumedResult(bodySize - cursor.Remaining());
}

void BlockedCodec::PrepareForVersion2() {
  CheckScratchColorBuffer();
  if (fDecodeTable == nullptr) MakeTarvishDecodeTable();
  if (fPalette == nullptr) MakeTarvishPalette(nullptr);
  ClearProcessedFlags();
}

int BlockedCodec::UnpackPalette(unsigned char* record, unsigned int available) {
  CheckScratchColorBuffer();
  ByteCursor cursor(record, available);
  ByteSpan compressed;
  if (!zlibvideo::ReadPaletteRecord(&cursor, &compressed)) return kUnpackFailed;

  auto size = static_cast<unsigned int>(fScratchColorBufferSize);
  if (compressed.size != 0 && fScratchColorBuffer != nullptr &&
      DecompressBlock(fScratchColorBuffer, &size, compressed.data, compressed.size) &&
      size == zlibvideo::kPaletteBytes) {
    MakeTarvishPalette(fScratchColorBuffer);
  }
  return static_cast<int>(available - cursor.Remaining());
}

int BlockedCodec::UnpackBlocks(unsigned char* records, unsigned int available, char codecType) {
  const std::int32_t capacity = zlibvideo::RawDataCapacity(fBlockWidth, fBlockHeight);
  ByteCursor cursor(records, available);
  BlockRecord record;
  for (std::int32_t row = 0; row < fGridHeight; ++row) {
    for (std::int32_t column = 0; column < fGridWidth; ++column) {
      if (!BlockRecord::Read(&cursor, codecType, &record)) return kUnpackFailed;
      if (record.IsEmpty()) continue;
      BitmapDataBlock* block = fBlocks == nullptr ? nullptr : GetBlock(row, column);
      if (block == nullptr) continue;
      if (!UnpackBlock(block, capacity, codecType, record)) return kUnpackFailed;
    }
  }
  return ConsumedResult(available - cursor.Remaining());
}

bool BlockedCodec::UnpackBlock(BitmapDataBlock* block, std::int32_t capacity, int codecType,
                               const BlockRecord& record) {
  switch (codecType) {
    case zlibvideo::kCodecTypeVersion1:
      return UnpackVersion1Block(block, capacity, record.payload);
    case zlibvideo::kCodecTypeVersion2:
      return block->fProcessed || UnpackVersion2Block(block, capacity, record);
    default:
      return true;
  }
}

bool BlockedCodec::UnpackVersion1Block(BitmapDataBlock* block, std::int32_t capacity,
                                       ByteSpan payload) {
  if (!block->SetRawData(nullptr, capacity)) return false;

  auto length = static_cast<unsigned int>(capacity);
  if (!DecompressBlock(block->fRawData, &length, payload.data, payload.size)) return false;
  block->fRawDataSize = static_cast<std::int32_t>(length);
  if (length >= block->PixelBytes()) block->fFilled = true;
  return true;
}

bool BlockedCodec::UnpackVersion2Block(BitmapDataBlock* block, std::int32_t capacity,
                                       const BlockRecord& record) {
  const bool hasRoom = block->SetRawData(nullptr, capacity);
  block->fFormat = record.header.format;
  block->fDiffRowStart = record.header.diffRowStart;
  block->fDiffRowCount = record.header.diffRowCount;
  if (!hasRoom) return false;

  auto length = static_cast<unsigned int>(capacity);
  return UnpackOneV2Block(block, 0, Writable(record.payload.data), record.payload.size, nullptr,
                          &length);
}
