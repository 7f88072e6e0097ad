#ifndef ZLIBVIDEO_BENCH_FLOOR_H
#define ZLIBVIDEO_BENCH_FLOOR_H

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "bench/StreamFile.h"
#include "bitstream/BlockRecord.h"
#include "bitstream/FrameHeader.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "tools/common/MessageOutline.h"

namespace zlibvideo::bench {

/// One payload and the way that zlib has to be called for it.
struct ZlibCall {
  enum class Kind { kWholeBuffer, kZlibStream, kPrimedRawStream };

  Kind kind = Kind::kWholeBuffer;
  ByteSpan payload;
  /// What a primed stream continues.
  std::shared_ptr<const Bytes> dictionary;
  /// The block that the payload fills, by its place in the grid, and where in it, in bytes.
  std::size_t block = 0;
  unsigned int offset = 0;
  unsigned int room = 0;
  /// The payload is a colour-reduced stream, which goes to the scratch buffer.
  bool reduced = false;
};

/// What no decoder can avoid for one message: its calls of zlib, and writing the bitmap once.
struct MessageFloor {
  FrameHeader header;
  std::vector<ZlibCall> calls;

  std::size_t blocks = 0;
  /// Bytes.
  unsigned int blockCapacity = 0;
  unsigned int scratchSize = 0;
  std::size_t bitmapBytes = 0;
};

/// Finds the floor of messages by decoding them in order.
class FloorFinder {
 public:
  /// Throws `std::runtime_error` when the message does not decode. The bytes must outlive the
  /// result.
  MessageFloor Find(const Bytes& message);

 private:
  void FindPass(const MessageOutline& outline, int pass, MessageFloor* floor);
  ZlibCall CallFor(const BlockRecord& record, std::size_t index, BitmapDataBlock* block,
                   unsigned int capacity);
  std::shared_ptr<const Bytes> Share(std::size_t index, ByteSpan dictionary);

  ZLibVideoDecompressor fDecoder{nullptr, nullptr};
  /// The last dictionary of each block: most payloads continue the same one as those before.
  std::map<std::size_t, std::shared_ptr<const Bytes>> fDictionaries;
};

/// Does what `MessageFloor` lists, with a buffer for each block as any decoder must have.
class FloorRunner {
 public:
  /// Throws `std::runtime_error` when zlib refuses a call. With `convert`, colour-reduced streams
  /// are also converted, by the plain loop that serves as reference.
  void Run(const MessageFloor& floor, bool convert);
  /// Runs the calls alone and returns the colour-reduced streams that came out of them.
  std::vector<Bytes> CollectReduced(const MessageFloor& floor);

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

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_FLOOR_H
