#ifndef ZLIBVIDEO_TOOLS_STREAM_DIAGNOSIS_H
#define ZLIBVIDEO_TOOLS_STREAM_DIAGNOSIS_H

#include <string>

#include "tools/stream/InspectingDecoder.h"
#include "tools/stream/MessageOutline.h"

namespace zlibvideo {

/// Finds out why `decoder` failed to decode a message. Call it directly after the failure, with the
/// same bytes at the same place. It asks the same readers and checks as the decoder did, against
/// the blocks as the failure left them, and changes nothing.
Failure Diagnose(const InspectingDecoder& decoder, ByteSpan message);
/// The same for a message that was taken apart already.
Failure Diagnose(const InspectingDecoder& decoder, const MessageOutline& outline);

/// A failure in one line: where, and what.
std::string ExplainFailure(const Failure& failure);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_DIAGNOSIS_H
