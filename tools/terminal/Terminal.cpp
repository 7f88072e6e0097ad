#include "tools/terminal/Terminal.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace zlibvideo {
namespace {

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

Terminal Terminal::OfStandardOutput() {
  return {isatty(STDOUT_FILENO) == 1 && Environment("NO_COLOR").empty() &&
          Environment("TERM") != "dumb"};
}

std::string Terminal::Styled(const std::string& text, Style style) const {
  if (!color) return text;
  return "\x1B[" + std::to_string(static_cast<int>(style)) + "m" + text + "\x1B[0m";
}

}  // namespace zlibvideo
