#ifndef ZLIBVIDEO_TOOLS_RECORD_DEFLATER_H
#define ZLIBVIDEO_TOOLS_RECORD_DEFLATER_H

#include <zlib.h>

#include <vector>

#include "bitstream/ByteSpan.h"
#include "bitstream/InflateStream.h"

namespace zlibvideo {

/// Makes payloads: compresses whole buffers, one stream each. Owns zlib's state, which it uses
/// again for every payload. A constructor without memory throws `std::bad_alloc`.
class Deflater {
 public:
  /// `level` is zlib's, 0 to 9. But 8 looks for matches in fewer places than zlib's own and puts
  /// off taking one for longer: 0.85 of the time for no more than a thousandth more bytes.
  Deflater(StreamForm form, int level);
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
  ~Deflater();

  /// One complete stream that holds `data`. A raw stream may continue after a dictionary, whose
  /// last 32 KiB it can refer to.
  std::vector<unsigned char> Compress(ByteSpan data, ByteSpan dictionary = {});

 private:
  bool Begin(ByteSpan dictionary);

  z_stream fStream = {};
  int fLevel;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_DEFLATER_H
