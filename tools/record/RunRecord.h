#ifndef ZLIBVIDEO_TOOLS_RECORD_RUNRECORD_H
#define ZLIBVIDEO_TOOLS_RECORD_RUNRECORD_H

#include <string>
#include <vector>

#include "tools/record/RecordOptions.h"

namespace zlibvideo {

/// The arguments of `record`. File names may be "-".
struct RecordArguments {
  /// PNG files in order, or a single stream of pictures.
  std::vector<std::string> inputs;
  /// Pixels of a raw picture. 0 when the pictures are not raw.
  int rawWidth = 0;
  int rawHeight = 0;
  std::string output;
  RecordOptions options;
  bool quiet = false;
};

/// Records all pictures. Writes each message as soon as its picture is there. A stop signal is an
/// ordinary end of a single input that is not a regular file. If the size of the pictures in a
/// stream changes, a key frame of the new size follows. Returns an `ExitStatus`. Throws
/// `ToolError`. If pictures of a stream were recorded before the error, the output has them, and
/// the status is `kExitDamagedInput`. REQUIRES: an input or more. Raw pictures have a single
/// input.
int RunRecord(const RecordArguments& arguments);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RUNRECORD_H
