#ifndef ZLIBVIDEO_FUZZ_MESSAGES_H
#define ZLIBVIDEO_FUZZ_MESSAGES_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "tests/StreamBuilder.h"
#include "tools/stream/SpanOf.h"

namespace zlibvideo {

/// Stops the process, which makes the input a finding.
inline void Require(bool holds) {
  if (!holds) std::abort();
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

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_FUZZ_MESSAGES_H
