#ifndef ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H
#define ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H

#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>

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

/// A table for people on standard output, with a line for each message, what is wrong under those
/// that failed, and a summary; with `maps` a letter for each block under each message.
std::unique_ptr<ReportWriter> MakeTextReport(bool maps);

/// A line for each message on standard output, which holds its `MessageJson`.
std::unique_ptr<ReportWriter> MakeJsonReport();

/// One self-contained web page. `name` is the stream's, for the page's heading; `pictureBytes`
/// limits the pictures in all.
std::unique_ptr<ReportWriter> MakeHtmlReport(const std::string& path, const std::string& name,
                                             std::uint64_t pictureBytes);

/// A message's report as one object. All messages have the same keys, those that `zlibvideo info
/// --help` explains; a value that does not apply is null.
nlohmann::ordered_json MessageJson(const MessageReport& report);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H
