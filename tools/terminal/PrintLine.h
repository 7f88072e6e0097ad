#ifndef ZLIBVIDEO_TOOLS_TERMINAL_PRINTLINE_H
#define ZLIBVIDEO_TOOLS_TERMINAL_PRINTLINE_H

#include <string>

namespace zlibvideo {

/// Makes a terminal start its current line over.
inline constexpr const char* kEraseTerminalLine = "\r\x1b[K";

/// Prints "zlibvideo: TEXT" to stderr, made `Printable`. On a terminal it takes the place of a
/// progress bar, which comes back with its next update.
void PrintLine(const std::string& text);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_PRINTLINE_H
