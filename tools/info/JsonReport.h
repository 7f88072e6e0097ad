#ifndef ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H

#include <string>

#include "tools/cli/OutputFile.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {

/// The report as JSON lines: one object (`MessageJson`) for each message.
class JsonReport : public ReportWriter {
 public:
  explicit JsonReport(const std::string& path) : fOutput(path) {}

  void Write(const MessageReport& report, const FrameView& frame) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  OutputFile fOutput;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H
