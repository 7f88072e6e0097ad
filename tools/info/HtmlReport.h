#ifndef ZLIBVIDEO_TOOLS_INFO_HTMLREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_HTMLREPORT_H

#include <cstdint>
#include <string>
#include <string_view>

#include "tools/cli/OutputFile.h"
#include "tools/info/PicturePatches.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {

/// The report as one self-contained web page: the page of `report.html` with the stream's data in
/// three places of it. Each message is the object of `MessageJson` and two keys more:
///
///   cells    for each record that was decoded and is not empty: index of its cell in the grid, of
///            its kind, its bytes, its pass; first row and rows of its band, if it has one
///   patch    how the picture changed: x, y, width, height (pixels from the top left), whole (it
///            needs no patch before it), src (a data URI); null when it did not; "omitted" once
///            the pictures have reached their limit
class HtmlReport : public ReportWriter {
 public:
  /// `name` is the stream's, for the page's heading; `pictureBytes` limits the pictures in all.
  HtmlReport(const std::string& path, const std::string& name, std::uint64_t pictureBytes);

  void Write(const MessageReport& report, const FrameView& frame) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  OutputFile fOutput;
  PicturePatches fPatches;
  bool fFirst = true;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_HTMLREPORT_H
