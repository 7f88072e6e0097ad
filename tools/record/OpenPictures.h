#ifndef ZLIBVIDEO_TOOLS_RECORD_OPENPICTURES_H
#define ZLIBVIDEO_TOOLS_RECORD_OPENPICTURES_H

#include <memory>
#include <string>
#include <vector>

#include "tools/pictures/PictureSource.h"

namespace zlibvideo {

/// The pictures to be recorded, as the command line names them.
struct PictureInputs {
  /// Names of files, or "-".
  std::vector<std::string> paths;
  /// Pixels of a raw picture; 0 when the pictures are not raw.
  int rawWidth = 0;
  int rawHeight = 0;

  bool AreRaw() const { return rawWidth != 0; }
  /// Whether there are several inputs: only PNG files can be several.
  bool AreList() const { return paths.size() > 1; }
  /// Whether the inputs are a list, or a single input with the extension of PNG.
  bool AreNamedAsPng() const;
};

/// Opens the pictures. Reads on up to `jobs` threads. The kind of a single input that is not raw is
/// told by its first bytes, which this call waits for. A stop signal is an ordinary end of a single
/// input that is not a regular file. Throws `ToolError` when an input cannot be read or is of no
/// known kind. REQUIRES: at least one path; raw pictures have a single path, not named as PNG.
std::unique_ptr<PictureSource> OpenPictures(const PictureInputs& inputs, unsigned int jobs);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_OPENPICTURES_H
