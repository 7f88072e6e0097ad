#ifndef ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H
#define ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H

#include <cstdint>
#include <memory>
#include <string>

#include "tools/info/MessageReport.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes the report of a stream, message by message. Errors of the output throw `ToolError`.
class ReportWriter {
 public:
  ReportWriter() = default;
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;
  virtual ~ReportWriter() = default;

  /// `frame` is the picture after the message, decoded or not.
  virtual void Write(const MessageReport& report, const FrameView& frame) = 0;
  /// Writes a sentence in place of failed messages that are held back.
  virtual void WriteHeldBack(const std::string& sentence) = 0;
  /// Ends the report. `problem` says why the file was not read to its end. Else it is empty.
  virtual void Finish(const StreamSummary& summary, const std::string& problem) = 0;
};

/// A table for people on standard output: a line for each message, the failures below it, and a
/// summary. With `maps`, a letter for each block below each message.
std::unique_ptr<ReportWriter> MakeTextReport(bool maps);

/// A line for each message on standard output, with a JSON object. All objects have the same keys,
/// which `zlibvideo info --help` explains. A value that does not apply is null.
std::unique_ptr<ReportWriter> MakeJsonReport();

/// A web page that fetches nothing. `name` is the name of the stream, for the heading. All pictures
/// together have at most `pictureBytes` bytes.
std::unique_ptr<ReportWriter> MakeHtmlReport(const std::string& path, const std::string& name,
                                             std::uint64_t pictureBytes);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_REPORTWRITER_H
