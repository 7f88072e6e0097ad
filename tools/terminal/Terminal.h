#ifndef ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H
#define ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H

#include <cstddef>
#include <string>

namespace zlibvideo {

/// Characters in a line of the terminal that `descriptor` is: COLUMNS of the environment if set,
/// else what the terminal says.
std::size_t TerminalWidth(int descriptor);

/// What the output of a text report can show.
struct Terminal {
  /// Characters beyond ASCII.
  bool unicode = false;
  /// Colour and other attributes.
  bool color = false;
  /// Characters that a line should have at most.
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

  /// Standard output. Only a terminal gets characters as the locale says, colour, unless the
  /// environment asks for none (NO_COLOR, or TERM=dumb), and lines of its width (COLUMNS if set).
  static Terminal OfStandardOutput();

  /// `text` in that style where there is colour, else as it is.
  std::string Styled(const std::string& text, Style style) const;
  /// The character to use of these two.
  const char* Either(const char* beyondAscii, const char* ascii) const {
    return unicode ? beyondAscii : ascii;
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H
