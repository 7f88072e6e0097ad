#ifndef ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H
#define ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H

#include <string>

namespace zlibvideo {

/// Abilities of the output of a text report.
struct Terminal {
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

  /// Standard output. If it is a terminal, it has colour unless the environment forbids it
  /// (NO_COLOR, TERM=dumb).
  static Terminal OfStandardOutput();

  /// `text` in that style if there is colour, else unchanged.
  std::string Styled(const std::string& text, Style style) const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_TERMINAL_H
