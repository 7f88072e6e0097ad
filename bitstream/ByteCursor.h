#ifndef ZLIBVIDEO_BITSTREAM_BYTECURSOR_H
#define ZLIBVIDEO_BITSTREAM_BYTECURSOR_H

#include <cstdint>

#include "ByteSpan.h"

namespace zlibvideo {

/// Reads untrusted bytes in order. A read that does not fit in the remaining bytes returns false
/// and changes neither the position nor the output. Multi-byte values are unsigned, most
/// significant byte first. The bytes are not owned and must outlive the cursor.
class ByteCursor {
 public:
  ByteCursor(const unsigned char* bytes, unsigned int size) : fNext(bytes), fRemaining(size) {}
  explicit ByteCursor(ByteSpan bytes) : ByteCursor(bytes.data, bytes.size) {}

  /// The bytes not yet read.
  ByteSpan Rest() const { return {fNext, fRemaining}; }
  unsigned int Remaining() const { return fRemaining; }

  [[nodiscard]] bool Skip(unsigned int count) {
    if (count > fRemaining) return false;
    Advance(count);
    return true;
  }

  [[nodiscard]] bool ReadU8(std::uint8_t* value) {
    if (fRemaining < 1) return false;
    *value = fNext[0];
    Advance(1);
    return true;
  }

  [[nodiscard]] bool ReadU16(std::uint16_t* value) {
    if (fRemaining < 2) return false;
    *value = static_cast<std::uint16_t>(fNext[0] << 8 | fNext[1]);
    Advance(2);
    return true;
  }

  [[nodiscard]] bool ReadU24(std::uint32_t* value) {
    if (fRemaining < 3) return false;
    *value = static_cast<std::uint32_t>(fNext[0] << 16 | fNext[1] << 8 | fNext[2]);
    Advance(3);
    return true;
  }

  /// Carves off the next `count` bytes.
  [[nodiscard]] bool ReadSpan(unsigned int count, ByteSpan* span) {
    if (count > fRemaining) return false;
    *span = {fNext, count};
    Advance(count);
    return true;
  }

 private:
  void Advance(unsigned int count) {
    fNext += count;
    fRemaining -= count;
  }

  const unsigned char* fNext;
  unsigned int fRemaining;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_BYTECURSOR_H
