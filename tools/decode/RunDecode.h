#ifndef ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H
#define ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H

#include "tools/decode/DecodeOptions.h"

namespace zlibvideo {

/// Decodes the messages of a message file up to the last one wanted and writes what `options` ask
/// for. A message that fails is reported on stderr and decoding goes on; what was decoded is kept
/// whatever comes after. Returns an `ExitStatus`; throws `ToolError` when an input or output cannot
/// be used.
int RunDecode(const DecodeOptions& options);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H
