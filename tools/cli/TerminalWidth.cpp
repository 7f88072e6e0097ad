#include "tools/cli/TerminalWidth.h"

#include <sys/ioctl.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace zlibvideo {

std::size_t TerminalWidth(int descriptor) {
  constexpr std::size_t kUsualWidth = 80;
  const char* const variable = std::getenv("COLUMNS");
  const std::string_view wanted = variable == nullptr ? "" : variable;
  std::size_t columns = 0;
  std::from_chars(wanted.data(), wanted.data() + wanted.size(), columns);
  if (columns != 0) return columns;
  winsize size = {};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualWidth;
  return size.ws_col;
}

}  // namespace zlibvideo
