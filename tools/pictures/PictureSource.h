#ifndef ZLIBVIDEO_TOOLS_PICTURES_PICTURESOURCE_H
#define ZLIBVIDEO_TOOLS_PICTURES_PICTURESOURCE_H

#include <cstdint>
#include <optional>
#include <string>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// The source of the pictures to encode, in order.
class PictureSource {
 public:
  PictureSource() = default;
  virtual ~PictureSource() = default;
  PictureSource(const PictureSource&) = delete;
  PictureSource& operator=(const PictureSource&) = delete;

  /// Replaces `picture` by the next picture, of 1 to 4095 pixels a side. Returns false after the
  /// last picture. The first call returns a picture. Throws `ToolError`, which names the picture,
  /// when it cannot be read. REQUIRES: no call has returned false or thrown.
  virtual bool Next(Picture* picture) = 0;
  /// The last picture that was read, as messages name it.
  virtual std::string Name() const = 0;
  /// The number of all pictures, if it is known.
  virtual std::optional<std::uint64_t> Count() const { return std::nullopt; }
  /// Whether the pictures come in a stream. A stream may not come again: after an error, the
  /// pictures before it are worth keeping.
  virtual bool IsStream() const = 0;
  /// Whether a stop signal is an ordinary end of the pictures.
  virtual bool EndsAtStopSignal() const { return false; }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PICTURESOURCE_H
