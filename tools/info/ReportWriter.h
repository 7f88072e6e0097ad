#ifndef ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H
#define ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H

#include "tools/info/MessageReport.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes the report of a stream in one form, message by message. Errors of the output are thrown
/// as `ToolError`.
class ReportWriter {
 public:
  ReportWriter() = default;
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;
  virtual ~ReportWriter() = default;

  /// `frame` is the picture as it stands after the message, decoded or not.
  virtual void Write(const MessageReport& report, const FrameView& frame) = 0;
  /// Ends the report; `problem` says why the file could not be read to its end, if it could not.
  virtual void Finish(const StreamSummary& summary, const std::string& problem) = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H
