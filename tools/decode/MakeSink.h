#ifndef ZLIBVIDEO_TOOLS_DECODE_MAKESINK_H
#define ZLIBVIDEO_TOOLS_DECODE_MAKESINK_H

#include <memory>

#include "tools/decode/DecodeOptions.h"
#include "tools/decode/FrameSink.h"

namespace zlibvideo {

/// The sink that `options` ask for.
std::unique_ptr<FrameSink> MakeSink(const DecodeOptions& options);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_MAKESINK_H
