#include "tools/info/JsonReport.h"

#include "tools/info/MessageJson.h"

namespace zlibvideo {

void JsonReport::Write(const MessageReport& report, const FrameView& /*frame*/) {
  fOutput.Write(MessageJson(report).dump() + "\n");
}

void JsonReport::Finish(const StreamSummary& /*summary*/, const std::string& /*problem*/) {
  fOutput.Commit();
}

}  // namespace zlibvideo
