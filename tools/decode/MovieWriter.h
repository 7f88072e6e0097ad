#ifndef ZLIBVIDEO_TOOLS_DECODE_MOVIEWRITER_H
#define ZLIBVIDEO_TOOLS_DECODE_MOVIEWRITER_H

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes a movie file, whose pictures are of one size. Errors are thrown as `ToolError`.
class MovieWriter {
 public:
  MovieWriter() = default;
  virtual ~MovieWriter() = default;
  MovieWriter(const MovieWriter&) = delete;
  MovieWriter& operator=(const MovieWriter&) = delete;

  /// Adds a picture of the size that the movie was begun with.
  virtual void Add(const FrameView& frame) = 0;
  /// Completes the file and puts it under its name.
  virtual void Finish() = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_MOVIEWRITER_H
