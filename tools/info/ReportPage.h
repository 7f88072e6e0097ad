#ifndef ZLIBVIDEO_TOOLS_INFO_REPORTPAGE_H
#define ZLIBVIDEO_TOOLS_INFO_REPORTPAGE_H

#include <string_view>

namespace zlibvideo {

/// The text of report.html with report.css and report.js in it, put into the program when it is
/// built.
extern const std::string_view kReportPage;

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_REPORTPAGE_H
