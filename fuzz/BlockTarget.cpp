// Fuzz target: a block of version 2 of any size, header bytes, prior data and payload.

#include <cstring>

#include "bitstream/MessageBody.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "fuzz/Require.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"
#include "tests/StreamBuilder.h"

namespace zlibvideo {
namespace {

/// An input begins with these bytes. The payload follows.
struct BlockCase {
  std::uint8_t blockSizeCodes, width, height;
  BlockHeader header;
  std::uint8_t previousSize[3], convertedSize[3];
};
constexpr std::size_t kCaseSize = sizeof(BlockCase);

/// Prior data, from no bytes to too many. With the high bit its buffer exists even when it is
/// empty.
void SetPrior(const std::uint8_t (&field)[3], BitmapDataBlock* block,
              bool (BitmapDataBlock::*set)(const unsigned char*, std::int32_t)) {
  const std::int32_t size = ((field[0] & 0x7F) << 16 | field[1] << 8 | field[2]) %
                            (block->fRawDataCapacity + block->fRawDataCapacity / 8);
  const Bytes data = Noise(static_cast<std::size_t>(size) + 1, 1);
  if (field[0] > 0x7F) static_cast<void>((block->*set)(data.data(), size + 1));
  static_cast<void>((block->*set)(data.data(), size));
}

struct OneBlockDecoder : ZLibVideoDecompressor {
  explicit OneBlockDecoder(const BlockCase& from) : ZLibVideoDecompressor(nullptr, nullptr) {
    const std::int32_t width = 16 << (from.blockSizeCodes >> 4) % 5;
    const std::int32_t height = 16 << (from.blockSizeCodes & 0xF) % 5;
    Require(SetupCodec(1 + from.width % width, 1 + from.height % height, width, height));
    CheckScratchColorBuffer();
    BitmapDataBlock* block = Block();
    Require(block->SetRawData(nullptr, RawDataCapacity(width, height)));
    SetPrior(from.previousSize, block, &BitmapDataBlock::SetPreviousData);
    SetPrior(from.convertedSize, block, &BitmapDataBlock::SetConvertedData);
    block->fFormat = from.header.format;
    block->fDiffRowStart = from.header.diffRowStart;
    block->fDiffRowCount = from.header.diffRowCount;
  }
  BitmapDataBlock* Block() const { return GetBlock(0, 0); }
};

Bytes Previous(const BitmapDataBlock& block) {
  return {block.fPreviousData, block.fPreviousData + block.fPreviousDataSize};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  BlockCase from = {};
  if (size < kCaseSize) return 0;
  std::memcpy(&from, data, kCaseSize);
  Bytes payload(data + kCaseSize, data + size);
  OneBlockDecoder decoder(from);
  BitmapDataBlock* block = decoder.Block();
  const Bytes previous = Previous(*block);
  const auto room = static_cast<unsigned int>(block->fRawDataCapacity);
  unsigned int length = room;
  const bool decoded = decoder.UnpackOneV2Block(
      block, 0, payload.data(), static_cast<unsigned int>(payload.size()), nullptr, &length);
  Require(decoded ? length <= room : length == room && !block->fProcessed);
  const bool replaced = IsDirect(from.header.format) && block->fProcessed;
  Require(Previous(*block) ==
          (replaced ? Bytes(block->fRawData, block->fRawData + length) : previous));
  return 0;
}

}  // namespace zlibvideo
