#ifndef ZLIBVIDEO_TOOLS_STREAM_DIAGNOSIS_H
#define ZLIBVIDEO_TOOLS_STREAM_DIAGNOSIS_H

#include <string>

#include "tools/stream/InspectingDecoder.h"
#include "tools/stream/MessageOutline.h"

namespace zlibvideo {

/// Finds out why `decoder` failed to decode a message. Call it directly after the failure, with the
/// outline of the same bytes at the same address. It changes nothing.
Failure Diagnose(const InspectingDecoder& decoder, const MessageOutline& outline);

/// A failure in a few words, to follow the message: "block 3,7: its zlib stream is damaged", with
/// row and column, or "its frame type is 0".
std::string ExplainFailure(const Failure& failure);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_DIAGNOSIS_H
