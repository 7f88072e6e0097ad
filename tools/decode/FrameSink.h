#ifndef ZLIBVIDEO_TOOLS_DECODE_FRAMESINK_H
#define ZLIBVIDEO_TOOLS_DECODE_FRAMESINK_H

#include <cstdint>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Where decoded pictures go. Messages arrive in order, with their index from 0; those that were
/// not asked for are left out. Errors of the output are thrown as `ToolError`.
class FrameSink {
 public:
  FrameSink() = default;
  virtual ~FrameSink() = default;
  FrameSink(const FrameSink&) = delete;
  FrameSink& operator=(const FrameSink&) = delete;

  /// A message was decoded. `frame` is valid for this call.
  virtual void WritePicture(std::uint64_t index, const FrameView& frame) = 0;
  /// A message failed; `frame` is the picture that still stands.
  virtual void NoteFailure(std::uint64_t /*index*/, const FrameView& /*frame*/) {}
  /// Nothing more comes: completes the output. An output of which this is not called is dropped.
  virtual void Finish() {}
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FRAMESINK_H
