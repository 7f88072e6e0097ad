#ifndef ZLIBVIDEO_TOOLS_TERMINAL_PRINTLINE_H
#define ZLIBVIDEO_TOOLS_TERMINAL_PRINTLINE_H

#include <string>

namespace zlibvideo {

/// Whether stderr is a terminal that can erase its current line.
bool CanEraseLine();

/// Makes such a terminal start its current line over.
inline constexpr const char* kEraseTerminalLine = "\r\x1b[K";

/// Prints "zlibvideo: TEXT" to stderr, made `Printable`, in place of a progress bar. The bar's next
/// update shows it again.
void PrintLine(const std::string& text);

/// Prints TEXT to stderr, made `Printable`.
void PrintNote(const std::string& text);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_PRINTLINE_H
