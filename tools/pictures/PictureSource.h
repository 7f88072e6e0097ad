#ifndef ZLIBVIDEO_TOOLS_PICTURES_PICTURESOURCE_H
#define ZLIBVIDEO_TOOLS_PICTURES_PICTURESOURCE_H

#include <cstdint>
#include <optional>
#include <string>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Where pictures to be encoded come from, one after another.
class PictureSource {
 public:
  PictureSource() = default;
  virtual ~PictureSource() = default;
  PictureSource(const PictureSource&) = delete;
  PictureSource& operator=(const PictureSource&) = delete;

  /// Puts the next picture, of 1 to 4095 pixels a side, in place of `picture`. False when there are
  /// no more, which is never the first result. Throws `ToolError`, which names the picture, when it
  /// cannot be read: there are no more after that.
  virtual bool Next(Picture* picture) = 0;
  /// The last picture that was read, as messages name it.
  virtual std::string Name() const = 0;
  /// How many pictures there are in all, where that is known.
  virtual std::optional<std::uint64_t> Count() const { return std::nullopt; }
  /// Whether the pictures may not be there again for another try: what came before an error is
  /// worth keeping.
  virtual bool IsStream() const = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PICTURESOURCE_H
