#ifndef ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H

#include <nlohmann/json.hpp>
#include <string>

#include "tools/cli/OutputFile.h"
#include "tools/info/MessageReport.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {

/// A message's report as one object. All messages have the same keys, those that `zlibvideo info
/// --help` explains; a value that does not apply is null.
nlohmann::ordered_json MessageJson(const MessageReport& report);

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
