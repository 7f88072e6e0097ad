#ifndef ZLIBVIDEO_BENCH_FLOOR_H
#define ZLIBVIDEO_BENCH_FLOOR_H

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "bench/StreamFile.h"
#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "tools/stream/MessageOutline.h"

namespace zlibvideo::bench {

/// One payload and the way that zlib has to be called for it.
struct ZlibCall {
  enum class Kind { kPalette, kWholeBuffer, kZlibStream, kPrimedRawStream };

  Kind kind = Kind::kWholeBuffer;
  ByteSpan payload;
  /// What a primed stream continues.
  std::shared_ptr<const Bytes> dictionary;
  /// The block that the payload fills, by its place in the grid, and where in it, in bytes.
  std::size_t block = 0;
  unsigned int offset = 0;
  unsigned int room = 0;
  /// The payload is a colour-reduced stream.
  bool reduced = false;

  bool GoesToScratch() const { return reduced || kind == Kind::kPalette; }
};

/// What no decoder can avoid for one message: its calls of zlib, and writing the bitmap once.
struct MessageFloor {
  FrameHeader header;
  std::vector<ZlibCall> calls;

  /// Of the grid: blocks in all, and blocks a row.
  std::size_t blocks = 0;
  int columns = 0;
  /// Bytes.
  unsigned int blockCapacity = 0;
  unsigned int scratchSize = 0;
  std::size_t bitmapBytes = 0;
};

/// Does what `MessageFloor` lists, with a buffer for each block as any decoder must have.
class FloorRunner {
 public:
  /// Throws `std::runtime_error` when zlib refuses a call. With `convert`, colour-reduced streams
  /// are also converted, by the plain loop that serves as reference.
  void Run(const MessageFloor& floor, bool convert);
  /// Makes one of the calls alone and returns what the payload decompressed to.
  Bytes Decompress(const MessageFloor& floor, const ZlibCall& call);

 private:
  void MakeRoom(const MessageFloor& floor);
  /// Returns the bytes that the payload decompressed to.
  unsigned int Inflate(const ZlibCall& call, unsigned char* block, unsigned int capacity);
  unsigned int InflateStream(const ZlibCall& call, unsigned char* block, unsigned int capacity,
                             unsigned char* output, unsigned int room);

  Bytes fBlocks;
  Bytes fScratch;
  Bytes fPicture;
  Bytes fBitmap;
};

/// Finds the floor of messages by decoding them in order, and checks that its calls of zlib give
/// the bytes that the decoder got.
class FloorFinder {
 public:
  /// Throws `std::runtime_error` when the message does not decode or its floor gives other bytes.
  /// The message must outlive the result.
  MessageFloor Find(const Bytes& message);

 private:
  void FindPass(const MessageOutline& outline, int pass, MessageFloor* floor);
  ZlibCall CallFor(const BlockRecord& record, std::size_t index, const BitmapDataBlock& block,
                   unsigned int capacity);
  /// Compares what `call` gives with what the decoder's block holds.
  void Check(const ZlibCall& call, const MessageFloor& floor);
  std::shared_ptr<const Bytes> Share(std::size_t index, ByteSpan dictionary);

  ZLibVideoDecompressor fDecoder{nullptr, nullptr};
  FloorRunner fRunner;
  /// The last dictionary of each block: most payloads continue the same one as those before.
  std::map<std::size_t, std::shared_ptr<const Bytes>> fDictionaries;
};

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_FLOOR_H
