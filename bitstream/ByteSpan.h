#ifndef ZLIBVIDEO_BITSTREAM_BYTESPAN_H
#define ZLIBVIDEO_BITSTREAM_BYTESPAN_H

namespace zlibvideo {

/// Bytes of a message that were checked to be there. Not owned; valid as long as the message.
struct ByteSpan {
  const unsigned char* data = nullptr;
  unsigned int size = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_BYTESPAN_H
