#ifndef ZLIBVIDEO_TOOLS_STREAM_SPANOF_H
#define ZLIBVIDEO_TOOLS_STREAM_SPANOF_H

#include <vector>

#include "bitstream/ByteSpan.h"

namespace zlibvideo {

/// All of `bytes`, at most 4 GiB. Valid until the vector changes.
inline ByteSpan SpanOf(const std::vector<unsigned char>& bytes) {
  return {bytes.data(), static_cast<unsigned int>(bytes.size())};
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_SPANOF_H
