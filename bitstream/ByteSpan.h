#ifndef ZLIBVIDEO_BITSTREAM_BYTESPAN_H
#define ZLIBVIDEO_BITSTREAM_BYTESPAN_H

namespace zlibvideo {

/// Bytes of a message that were checked to be there. Not owned. Valid as long as the message.
struct ByteSpan {
  const unsigned char* data = nullptr;
  unsigned int size = 0;
};

/// For operations that take bytes as writable but only read them: the decoding operations, whose
/// form the host's interface gives, and the operations of zlib.
inline unsigned char* Writable(const unsigned char* bytes) {
  return const_cast<unsigned char*>(bytes);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_BYTESPAN_H
