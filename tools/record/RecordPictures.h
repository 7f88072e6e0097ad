#ifndef ZLIBVIDEO_TOOLS_RECORD_RECORDPICTURES_H
#define ZLIBVIDEO_TOOLS_RECORD_RECORDPICTURES_H

#include "tools/pictures/PictureSource.h"
#include "tools/record/RecordOptions.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {

/// Records all pictures of `source` and commits `writer`. Each message is written as soon as its
/// picture is there. Throws `ToolError`; what was recorded of a stream before that is committed,
/// and the status then is `kExitDamagedInput`.
void RecordPictures(PictureSource* source, const RecordOptions& options, bool showProgress,
                    MessageFileWriter* writer);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RECORDPICTURES_H
