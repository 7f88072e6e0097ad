#ifndef ZLIBVIDEO_TOOLS_RECORD_OPENPICTURES_H
#define ZLIBVIDEO_TOOLS_RECORD_OPENPICTURES_H

#include <memory>
#include <string>
#include <vector>

#include "tools/pictures/PictureSource.h"

namespace zlibvideo {

/// What the command line says of the pictures to be recorded.
struct PictureInputs {
  /// Names of files, or "-".
  std::vector<std::string> paths;
  /// Pixels of a raw picture; 0 when the pictures are not raw.
  int rawWidth = 0;
  int rawHeight = 0;

  bool AreRaw() const { return rawWidth != 0; }
  /// Whether they are several, which can only be PNG files.
  bool AreList() const { return paths.size() > 1; }
  /// Whether they are a list, or one with the extension of PNG.
  bool AreNamedAsPng() const;
};

/// Uses up to `jobs` threads. Of one input that need not be PNG, the first bytes are waited for to
/// see what it is. Unless it is a regular file, the first SIGINT, SIGTERM or SIGHUP ends it from
/// then on. Throws `ToolError` when it cannot be read or is of no known kind. REQUIRES: at least
/// one path; one that is not named as PNG if they are raw.
std::unique_ptr<PictureSource> OpenPictures(const PictureInputs& inputs, unsigned int jobs);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_OPENPICTURES_H
