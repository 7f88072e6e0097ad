#ifndef ZLIBVIDEO_TOOLS_DECODE_HASHLINE_H
#define ZLIBVIDEO_TOOLS_DECODE_HASHLINE_H

#include <cstdint>
#include <string>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// What `decode --format hash` prints for a message, without the line end:
/// "INDEX STATUS WIDTHxHEIGHT CRC32". The index is from 0, the status 1 for decoded or 0 for
/// failed; size and checksum are those of the picture after the message. The checksum is the
/// CRC-32 of all its bytes in 8 hexadecimal digits.
std::string HashLine(std::uint64_t index, bool decoded, const FrameView& frame);

/// Whether `text` could be one.
bool IsHashLine(const std::string& text);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_HASHLINE_H
