#ifndef ZLIBVIDEO_BITSTREAM_INFLATESTREAM_H
#define ZLIBVIDEO_BITSTREAM_INFLATESTREAM_H

#include <zlib.h>

#include "bitstream/ByteSpan.h"

namespace zlibvideo {

/// What stands around compressed data.
enum class StreamForm {
  kZlib,        ///< header and check value, RFC 1950
  kRawDeflate,  ///< nothing, RFC 1951
};

/// One zlib inflate stream, opened at most once and released on every way out. Its state comes
/// from zlib's own allocator, not from the host's.
class InflateStream {
 public:
  InflateStream() = default;
  InflateStream(const InflateStream&) = delete;
  InflateStream& operator=(const InflateStream&) = delete;
  ~InflateStream();

  /// Prepares for a stream of `form`. False when zlib has no memory or is another interface than
  /// the one compiled for; only `Close` may follow then.
  [[nodiscard]] bool Open(StreamForm form);

  /// Feeds `input` and writes at most `room` bytes to `output`. Input that is left over when the
  /// room is full is dropped. `flush` and the result are zlib's.
  [[nodiscard]] int Inflate(ByteSpan input, unsigned char* output, unsigned int room, int flush);

  /// Bytes written since the stream was opened, over all calls; counted in 32 bits.
  unsigned int TotalOutput() const { return static_cast<unsigned int>(fStream.total_out); }

  /// Releases the stream. False when zlib finds its state damaged; true for one never opened.
  [[nodiscard]] bool Close();

 private:
  z_stream fStream = {};
  bool fOpen = false;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_INFLATESTREAM_H
