#ifndef ZLIBVIDEO_TOOLS_INFO_TERMINAL_H
#define ZLIBVIDEO_TOOLS_INFO_TERMINAL_H

#include <string>

namespace zlibvideo {

/// What the place that text goes to can show.
struct Terminal {
  /// Characters beyond ASCII.
  bool unicode = false;
  /// Colour and other attributes.
  bool color = false;

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

  /// Standard output: both only on a terminal; characters as the locale says, no colour when the
  /// environment asks for none (NO_COLOR, or TERM=dumb).
  static Terminal OfStandardOutput();

  /// `text` in that style where there is colour, else as it is.
  std::string Styled(const std::string& text, Style style) const;
  /// The character to use of these two.
  const char* Either(const char* beyondAscii, const char* ascii) const {
    return unicode ? beyondAscii : ascii;
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_TERMINAL_H
