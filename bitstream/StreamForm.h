#ifndef ZLIBVIDEO_BITSTREAM_STREAMFORM_H
#define ZLIBVIDEO_BITSTREAM_STREAMFORM_H

namespace zlibvideo {

/// What stands around compressed data.
enum class StreamForm {
  kZlib,        ///< header and check value, RFC 1950
  kRawDeflate,  ///< nothing, RFC 1951
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_STREAMFORM_H
