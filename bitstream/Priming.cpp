#include "bitstream/Priming.h"

#include <algorithm>

#include "bitstream/ByteCursor.h"
#include "grid/BitmapDataBlock.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {
namespace {

constexpr unsigned char kStoredNotFinal = 0x00;  // BFINAL 0, BTYPE 00

bool PrimeOneBlock(InflateStream* stream, ByteSpan piece, unsigned char* output,
                   unsigned int room) {
  const auto header = StoredBlockHeader(piece.size);
  return stream->Inflate({header.data(), kStoredBlockHeaderSize}, output, room, Z_NO_FLUSH) ==
             Z_OK &&
         stream->Inflate(piece, output, room, Z_SYNC_FLUSH) == Z_OK;
}

}  // namespace

std::array<unsigned char, kStoredBlockHeaderSize> StoredBlockHeader(unsigned int length) {
  const auto low = static_cast<unsigned char>(length & 0xFF);
  const auto high = static_cast<unsigned char>(length >> 8 & 0xFF);
  return {kStoredNotFinal, low, high, static_cast<unsigned char>(low ^ 0xFF),
          static_cast<unsigned char>(high ^ 0xFF)};
}

ByteSpan PrimingDictionary(const BitmapDataBlock& block, unsigned int format) {
  if (HasColorField(format) && block.fConvertedData != nullptr) {
    return {block.fConvertedData, static_cast<unsigned int>(block.fConvertedDataSize)};
  }
  return {block.fPreviousData, static_cast<unsigned int>(block.fPreviousDataSize)};
}

bool Prime(InflateStream* stream, ByteSpan dictionary, unsigned char* output, unsigned int room) {
  if (dictionary.data == nullptr || dictionary.size == 0) return false;
  ByteCursor rest(dictionary);
  while (rest.Remaining() != 0) {
    ByteSpan piece;
    if (!rest.ReadSpan(std::min(rest.Remaining(), kMaxStoredBlock), &piece)) return false;
    const unsigned int written = stream->TotalOutput();
    if (!PrimeOneBlock(stream, piece, output + written, room - written)) return false;
  }
  return true;
}

}  // namespace zlibvideo
