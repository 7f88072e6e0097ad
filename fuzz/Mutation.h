#ifndef ZLIBVIDEO_FUZZ_MUTATION_H
#define ZLIBVIDEO_FUZZ_MUTATION_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "grid/BitmapDataBlock.h"
#include "tests/StreamBuilder.h"
#include "tools/stream/SpanOf.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace zlibvideo {

using Random = std::mt19937;

/// Stops the process, which makes the input a finding.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

/// From 0 to `limit` - 1.
inline unsigned int Below(std::size_t limit, Random* random) {
  return static_cast<unsigned int>((*random)() % limit);
}
inline bool OneIn(unsigned int count, Random* random) {
  return Below(count, random) == 0;
}

inline Bytes CopyOf(ByteSpan bytes) {
  return {bytes.data, bytes.data + bytes.size};
}

/// The messages of a file, the last possibly cut off, each in memory that ends where it does.
inline std::vector<Bytes> SplitMessages(ByteSpan file) {
  std::vector<Bytes> messages;
  ByteCursor cursor(file);
  std::uint32_t length = 0;
  ByteSpan bytes;
  while (cursor.ReadU24(&length) && cursor.ReadSpan(std::min(length, cursor.Remaining()), &bytes)) {
    messages.push_back(CopyOf(bytes));
  }
  return messages;
}

/// Whether the message has a header, of a picture that does not cost the fuzzer too much time.
inline bool ReadSmallHeader(const Bytes& message, FrameHeader* header) {
  constexpr int kMaxPixels = 1 << 16;
  ByteCursor cursor(SpanOf(message));
  return FrameHeader::Read(&cursor, header) &&
         header->imageWidth * header->imageHeight <= kMaxPixels;
}

/// A payload for `block` with the contents of `payload`, which `header` belongs to: mutated,
/// compressed as the header says and primed with the block's data. With `withHeader`, `*header`
/// becomes another before that.
Bytes MutatePayload(const BitmapDataBlock& block, ByteSpan payload, BlockHeader* header,
                    bool withHeader, Random* random);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_FUZZ_MUTATION_H
