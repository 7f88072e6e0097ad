#ifndef ZLIBVIDEO_TOOLS_RECORD_RECORDPICTURES_H
#define ZLIBVIDEO_TOOLS_RECORD_RECORDPICTURES_H

#include "tools/pictures/PictureSource.h"
#include "tools/record/RecordOptions.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {

/// Records all pictures of `source` and commits `writer`. Writes each message as soon as its
/// picture is there. In a stream, a picture of another size begins with a key frame. Throws
/// `ToolError`; if pictures of a stream were recorded before the error, they are committed, and the
/// status is `kExitDamagedInput`. With `showProgress`, a terminal shows a progress bar and a line
/// at the end.
void RecordPictures(PictureSource* source, const RecordOptions& options, bool showProgress,
                    MessageFileWriter* writer);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RECORDPICTURES_H
