#ifndef ZLIBVIDEO_BITSTREAM_CODECTYPE_H
#define ZLIBVIDEO_BITSTREAM_CODECTYPE_H

namespace zlibvideo {

/// The low four bits of a message's first byte. A message of any other type is walked as version 1
/// without changing a block.
inline constexpr int kCodecTypeVersion1 = 3;
inline constexpr int kCodecTypeVersion2 = 6;

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_CODECTYPE_H
