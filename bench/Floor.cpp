#include "bench/Floor.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <tuple>

#include "bench/PlainLoops.h"
#include "bitstream/InflateStream.h"
#include "bitstream/RowBand.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"
#include "host/BitmapPixel.h"
#include "tools/stream/SpanOf.h"

namespace zlibvideo::bench {
namespace {

void Require(bool condition, const char* what) {
  if (!condition) throw std::runtime_error(what);
}

bool Holds(const std::shared_ptr<const Bytes>& bytes, ByteSpan span) {
  return bytes != nullptr &&
         std::equal(bytes->begin(), bytes->end(), span.data, span.data + span.size);
}

}  // namespace

MessageFloor FloorFinder::Find(const Bytes& message) {
  const MessageOutline outline = MessageOutline::Read(SpanOf(message));
  Require(!outline.fault, "cannot be read");
  MessageFloor floor;
  floor.header = *outline.header;
  const auto [width, height, blockWidth, blockHeight] =
      std::tuple(floor.header.imageWidth, floor.header.imageHeight, floor.header.blockWidth,
                 floor.header.blockHeight);
  floor.columns = outline.gridWidth;
  floor.blocks =
      static_cast<std::size_t>(outline.gridWidth) * static_cast<std::size_t>(outline.gridHeight);
  floor.blockCapacity = static_cast<unsigned int>(RawDataCapacity(blockWidth, blockHeight));
  floor.scratchSize = static_cast<unsigned int>(ScratchBufferSize(blockWidth, blockHeight));
  floor.bitmapBytes =
      static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kBitmapPixelBytes;

  Require(fDecoder.SetupCodec(width, height, blockWidth, blockHeight), "has no grid");
  fDecoder.CheckScratchColorBuffer();
  if (outline.palette.size != 0) {
    constexpr unsigned int kPaletteOffset = FrameHeader::kSize + 1;  // after the flags byte
    Require(fDecoder.UnpackPalette(Writable(message.data()) + kPaletteOffset,
                                   static_cast<unsigned int>(message.size()) - kPaletteOffset) > 0,
            "has no palette");
    ZlibCall call;
    call.kind = ZlibCall::Kind::kPalette;
    call.payload = outline.palette;
    floor.calls.push_back(call);
  }
  for (int pass = 1; pass <= outline.passes; ++pass) {
    const std::size_t first = floor.calls.size();
    FindPass(outline, pass, &floor);
    const unsigned int offset =
        outline.records[static_cast<std::size_t>(pass - 1) * floor.blocks].offset;
    fDecoder.ClearProcessedFlags();
    Require(fDecoder.UnpackBlocks(Writable(message.data()) + offset,
                                  static_cast<unsigned int>(message.size()) - offset,
                                  static_cast<char>(floor.header.codecType)) >= 0,
            "does not decode");
    for (std::size_t i = first; i < floor.calls.size(); ++i) Check(floor.calls[i], floor);
  }
  return floor;
}

/// Runs before the pass is decoded: a block has one record in it, so its reference data still is
/// what that record's payload continues.
void FloorFinder::FindPass(const MessageOutline& outline, int pass, MessageFloor* floor) {
  for (const MessageOutline::Record& entry : outline.records) {
    if (entry.place.pass != pass || entry.record.payload.size == 0) continue;
    const auto index = static_cast<std::size_t>(entry.place.row * outline.gridWidth) +
                       static_cast<std::size_t>(entry.place.column);
    const BitmapDataBlock* block = fDecoder.GetBlock(entry.place.row, entry.place.column);
    floor->calls.push_back(CallFor(entry.record, index, *block, floor->blockCapacity));
  }
}

ZlibCall FloorFinder::CallFor(const BlockRecord& record, std::size_t index,
                              const BitmapDataBlock& block, unsigned int capacity) {
  ZlibCall call;
  call.payload = record.payload;
  call.block = index;
  call.room = capacity;
  const unsigned int format = record.header.format;
  call.reduced = HasColorField(format);
  if (IsDirect(format)) return call;

  call.kind = ZlibCall::Kind::kZlibStream;
  if (IsPrimed(format)) {
    call.kind = ZlibCall::Kind::kPrimedRawStream;
    call.dictionary = Share(index, PrimingDictionary(block, format));
  }
  if (HasBand(format)) {
    RowBand band;
    Require(RowBand::Find(block, record.header, capacity, &band) == RowBand::Fault::kNone,
            "no such band");
    if (band.IsEmpty()) call.payload = {};  // the decoder ignores it
    call.offset = band.offset;
    call.room = capacity - band.offset - band.after;
  }
  return call;
}

void FloorFinder::Check(const ZlibCall& call, const MessageFloor& floor) {
  Bytes bytes = fRunner.Decompress(floor, call);
  Require(bytes.empty() == (call.payload.size == 0), "decompresses to nothing in its floor");
  if (call.reduced) {
    Bytes pixels(call.room);
    unsigned int size = call.room;
    fDecoder.ConvertImageColorToQuarn24(pixels.data(), &size, bytes.data(),
                                        static_cast<unsigned int>(bytes.size()),
                                        static_cast<unsigned char>(kFormatColorReduced));
    pixels.resize(size);
    bytes.swap(pixels);
  }
  const auto index = static_cast<std::int32_t>(call.block);
  const BitmapDataBlock* block = fDecoder.GetBlock(index / floor.columns, index % floor.columns);
  Require(std::equal(bytes.begin(), bytes.end(), block->fRawData + call.offset),
          "decompresses to other bytes in its floor");
}

std::shared_ptr<const Bytes> FloorFinder::Share(std::size_t index, ByteSpan dictionary) {
  std::shared_ptr<const Bytes>& last = fDictionaries[index];
  if (!Holds(last, dictionary)) {
    last = std::make_shared<const Bytes>(dictionary.data, dictionary.data + dictionary.size);
  }
  return last;
}

void FloorRunner::Run(const MessageFloor& floor, bool convert) {
  MakeRoom(floor);
  for (const ZlibCall& call : floor.calls) {
    unsigned char* block = fBlocks.data() + call.block * floor.blockCapacity;
    const unsigned int size = Inflate(call, block, floor.blockCapacity);
    if (convert && call.reduced) {
      PlainConvert(fScratch.data(), size, block + call.offset, call.room,
                   BlockedCodec::fDefaultTarvishPalette, PlainColorTable());
    }
  }
  std::memcpy(fBitmap.data(), fPicture.data(), floor.bitmapBytes);
}

Bytes FloorRunner::Decompress(const MessageFloor& floor, const ZlibCall& call) {
  MakeRoom(floor);
  unsigned char* block = fBlocks.data() + call.block * floor.blockCapacity;
  const unsigned int size = Inflate(call, block, floor.blockCapacity);
  const unsigned char* output = call.GoesToScratch() ? fScratch.data() : block + call.offset;
  return {output, output + size};
}

void FloorRunner::MakeRoom(const MessageFloor& floor) {
  fBlocks.resize(floor.blocks * floor.blockCapacity);
  fScratch.resize(floor.scratchSize);
  fPicture.resize(floor.bitmapBytes, 1);
  fBitmap.resize(floor.bitmapBytes);
}

unsigned int FloorRunner::Inflate(const ZlibCall& call, unsigned char* block,
                                  unsigned int capacity) {
  using Kind = ZlibCall::Kind;
  const bool toScratch = call.GoesToScratch();
  unsigned char* output = toScratch ? fScratch.data() : block + call.offset;
  const auto room = toScratch ? static_cast<unsigned int>(fScratch.size()) : call.room;
  if (call.kind == Kind::kZlibStream || call.kind == Kind::kPrimedRawStream) {
    return InflateStream(call, block, capacity, output, room);
  }
  uLongf size = room;
  Require(uncompress(output, &size, call.payload.data, call.payload.size) == Z_OK,
          "zlib refuses a payload");
  return static_cast<unsigned int>(size);
}

unsigned int FloorRunner::InflateStream(const ZlibCall& call, unsigned char* block,
                                        unsigned int capacity, unsigned char* output,
                                        unsigned int room) {
  z_stream stream = {};
  const auto inflateTo = [&stream](ByteSpan input, unsigned char* target, unsigned int targetRoom,
                                   int flush) {
    stream.next_in = Writable(input.data);
    stream.avail_in = input.size;
    stream.next_out = target;
    stream.avail_out = targetRoom;
    return inflate(&stream, flush);
  };

  const bool primed = call.kind == ZlibCall::Kind::kPrimedRawStream;
  Require(inflateInit2(&stream, primed ? -MAX_WBITS : MAX_WBITS) == Z_OK, "zlib has no memory");
  for (std::size_t done = 0; primed && done < call.dictionary->size();) {
    const auto size = static_cast<unsigned int>(
        std::min<std::size_t>(call.dictionary->size() - done, kMaxStoredBlock));
    const auto header = StoredBlockHeader(size);
    const auto written = static_cast<unsigned int>(stream.total_out);
    inflateTo({header.data(), kStoredBlockHeaderSize}, block + written, capacity - written,
              Z_NO_FLUSH);
    inflateTo({call.dictionary->data() + done, size}, block + written, capacity - written,
              Z_SYNC_FLUSH);
    done += size;
  }
  const uLong before = stream.total_out;
  Require(!primed || before == call.dictionary->size(), "zlib refuses a dictionary");
  inflateTo(call.payload, output, room, call.reduced ? Z_FINISH : Z_SYNC_FLUSH);
  const auto size = static_cast<unsigned int>(stream.total_out - before);
  Require(inflateEnd(&stream) == Z_OK, "zlib cannot end a stream");
  return size;
}

}  // namespace zlibvideo::bench
