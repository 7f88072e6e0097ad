#ifndef ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H

#include <string>

#include "tools/common/OutputFile.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {

/// The report as JSON lines: one object for each message, all with the same keys. A value that the
/// message has nothing for is null.
///
///   index          of the message, from 0
///   offset         where in the file it begins, in bytes
///   bytes          its length
///   decoded        true or false
///   frame_type     0 to 15; key_frame: whether that is a key frame's
///   codec_type     0 to 15
///   picture        width and height, in pixels
///   block          width and height, in pixels
///   grid           columns and rows, in blocks
///   flags          version 2: the flags byte
///   palette        none, installed, empty, past end, unreadable, wrong size
///   palette_bytes  size of the compressed palette
///   passes         passes over the grid that the message has begun
///   changed_blocks blocks with a record that is not empty
///   records        for each kind of record: how many were decoded, and their bytes in all
///   unread_bytes   bytes behind the last record
///   failure        what is wrong, offset in the message in bytes; pass (from 1), row (from 0, the
///                  bottom of the picture) and column (from 0) when it is about a block, else null
class JsonReport : public ReportWriter {
 public:
  explicit JsonReport(const std::string& path) : fOutput(path) {}

  void Write(const MessageReport& report, const FrameView& frame) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

  /// One message's object, in one line without its end.
  static std::string Line(const MessageReport& report);

 private:
  OutputFile fOutput;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_JSONREPORT_H
