#ifndef ZLIBVIDEO_TOOLS_STREAM_ZLIBTRIAL_H
#define ZLIBVIDEO_TOOLS_STREAM_ZLIBTRIAL_H

#include <string>

#include "bitstream/ByteSpan.h"

namespace zlibvideo {

/// A whole zlib stream (RFC 1950) decompressed once more, to learn what is wrong with it.
struct ZlibTrial {
  /// What is wrong, as the end of a sentence that begins with the stream; empty when nothing is.
  std::string fault;
  /// Bytes that it decompressed to, at most one more than the room.
  unsigned int produced = 0;

  /// Tries `source` in a room of that many bytes. Throws `std::bad_alloc` without memory.
  static ZlibTrial Run(ByteSpan source, unsigned int room);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_ZLIBTRIAL_H
