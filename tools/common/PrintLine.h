#ifndef ZLIBVIDEO_TOOLS_COMMON_PRINTLINE_H
#define ZLIBVIDEO_TOOLS_COMMON_PRINTLINE_H

#include <string>

namespace zlibvideo {

/// Prints "zlibvideo: TEXT" to stderr as one line: control characters, which may come from a file
/// name, are replaced. Clear a progress bar first.
void PrintLine(const std::string& text);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_COMMON_PRINTLINE_H
