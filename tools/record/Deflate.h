#ifndef ZLIBVIDEO_TOOLS_RECORD_DEFLATE_H
#define ZLIBVIDEO_TOOLS_RECORD_DEFLATE_H

#include <vector>

#include "bitstream/ByteSpan.h"
#include "bitstream/InflateStream.h"

namespace zlibvideo {

/// Returns a complete stream that holds `data`. A raw stream can refer to the last 32 KiB of
/// `dictionary`. `level` is zlib's, 0 to 9, but level 8 searches fewer places than zlib's own and
/// defers matches longer: it needs 0.85 of the time and writes at most a thousandth more bytes. The
/// result depends on the arguments and the zlib library alone. If memory runs out, throws
/// `std::bad_alloc`. If zlib fails, throws `RecordError`.
std::vector<unsigned char> Deflate(StreamForm form, int level, ByteSpan data,
                                   ByteSpan dictionary = {});

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_DEFLATE_H
