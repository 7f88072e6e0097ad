#ifndef ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H
#define ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H

#include <cstddef>
#include <string>

namespace zlibvideo {

/// Characters in a line of the terminal `descriptor`: COLUMNS of the environment if set, else the
/// terminal's own width.
std::size_t TerminalWidth(int descriptor);

/// Abilities of the output of a text report.
struct Terminal {
  /// Characters beyond ASCII.
  bool unicode = false;
  /// Colour and other attributes.
  bool color = false;
  /// Characters in a line, at most.
  std::size_t width = 100;

  /// Attributes of text, as terminals number them.
  enum class Style {
    kBold = 1,
    kDim = 2,
    kRed = 31,
    kGreen = 32,
    kYellow = 33,
    kBlue = 34,
    kMagenta = 35,
    kCyan = 36
  };

  /// Standard output. If it is a terminal, the locale decides about characters, the environment
  /// (NO_COLOR, TERM=dumb) about colour, and lines have its width.
  static Terminal OfStandardOutput();

  /// `text` in that style if there is colour, else unchanged.
  std::string Styled(const std::string& text, Style style) const;
  const char* Either(const char* beyondAscii, const char* ascii) const {
    return unicode ? beyondAscii : ascii;
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H
