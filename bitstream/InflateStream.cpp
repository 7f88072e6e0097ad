#include "bitstream/InflateStream.h"

#include <algorithm>
#include <cassert>

#include "bitstream/ByteCursor.h"
#include "grid/BitmapDataBlock.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {
namespace {

constexpr int kWindowBits = 15;                  // 32 KiB of history
constexpr unsigned char kStoredNotFinal = 0x00;  // BFINAL 0, BTYPE 00

// zlib compares these two with its own to refuse a program that was compiled for another layout of
// the stream record: of the version only the first digit, of the record its size. Naming a fixed
// version keeps any later zlib with the same interface usable.
constexpr char kZlibVersion[] = "1.2.8";
constexpr int kStreamRecordSize = static_cast<int>(sizeof(z_stream));
static_assert(sizeof(uLong) != 8 || sizeof(void*) != 8 || kStreamRecordSize == 112,
              "with 64-bit pointers and longs, zlib's interface fixes the record at 112 bytes");

}  // namespace

InflateStream::~InflateStream() {
  static_cast<void>(Close());
}

bool InflateStream::Open(StreamForm form) {
  assert(!fOpen);
  const int windowBits = form == StreamForm::kRawDeflate ? -kWindowBits : kWindowBits;
  fOpen = inflateInit2_(&fStream, windowBits, kZlibVersion, kStreamRecordSize) == Z_OK;
  return fOpen;
}

bool InflateStream::Prime(ByteSpan dictionary, unsigned char* output, unsigned int room) {
  if (dictionary.data == nullptr || dictionary.size == 0) return false;
  ByteCursor rest(dictionary);
  while (rest.Remaining() != 0) {
    ByteSpan piece;
    if (!rest.ReadSpan(std::min(rest.Remaining(), kMaxStoredBlock), &piece)) return false;
    const unsigned int written = TotalOutput();
    if (!PrimeOneBlock(piece, output + written, room - written)) return false;
  }
  return true;
}

bool InflateStream::PrimeOneBlock(ByteSpan piece, unsigned char* output, unsigned int room) {
  const auto header = StoredBlockHeader(piece.size);
  return Inflate({header.data(), kStoredBlockHeaderSize}, output, room, Z_NO_FLUSH) == Z_OK &&
         Inflate(piece, output, room, Z_SYNC_FLUSH) == Z_OK;
}

int InflateStream::Inflate(ByteSpan input, unsigned char* output, unsigned int room, int flush) {
  fStream.next_in = Writable(input.data);
  fStream.avail_in = input.size;
  fStream.next_out = output;
  fStream.avail_out = room;
  return inflate(&fStream, flush);
}

bool InflateStream::Close() {
  if (!fOpen) return true;
  fOpen = false;
  return inflateEnd(&fStream) == Z_OK;
}

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

}  // namespace zlibvideo
