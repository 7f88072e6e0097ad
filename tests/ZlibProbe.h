#ifndef ZLIBVIDEO_TESTS_ZLIBPROBE_H
#define ZLIBVIDEO_TESTS_ZLIBPROBE_H

#include "tests/StreamBuilder.h"

namespace zlibvideo {

/// Whether the zlib that is linked leaves the room behind the bytes that it produced as it was.
/// Debian's does, but no zlib has to: only where this holds may a test expect anything there.
inline bool ZlibLeavesRoomAlone() {
  // Ends in a copy of 9 bytes from further back than a vector is long.
  Bytes content = Noise(64, 1);
  Append(&content, Bytes(content.begin(), content.begin() + 9));
  const Bytes payload = Zlib(content);
  constexpr std::ptrdiff_t kRest = 400;
  Bytes room(content.size() + kRest, 0xA5);
  auto size = static_cast<uLongf>(room.size());
  uncompress(room.data(), &size, payload.data(), static_cast<uLong>(payload.size()));
  return size == content.size() && std::count(room.end() - kRest, room.end(), 0xA5) == kRest;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_ZLIBPROBE_H
