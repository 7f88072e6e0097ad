#ifndef ZLIBVIDEO_BITSTREAM_MEMORYBOUND_H
#define ZLIBVIDEO_BITSTREAM_MEMORYBOUND_H

#include <cstdint>

#include "../host/Export.h"
#include "FrameHeader.h"

namespace zlibvideo {

/// The most bytes that a decoder holds of `SystemNew` at a time, its own object not counted, when
/// it is given messages with this header, which must be valid. zlib's state and the host's bitmap
/// come on top. A decoder keeps its version-2 buffers after the stream has changed to version 1:
/// where a stream may hold both, ask for the codec type of version 2.
[[nodiscard]] ZLIBVIDEO_EXPORT std::uint64_t MemoryBound(const FrameHeader& header);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_MEMORYBOUND_H
