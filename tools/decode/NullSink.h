#ifndef ZLIBVIDEO_TOOLS_DECODE_NULLSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_NULLSINK_H

#include "tools/decode/FrameSink.h"

namespace zlibvideo {

/// Drops the pictures.
class NullSink : public FrameSink {
 public:
  void WritePicture(std::uint64_t /*index*/, const FrameView& /*frame*/) override {}
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_NULLSINK_H
