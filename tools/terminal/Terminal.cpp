#include "tools/terminal/Terminal.h"

#include <langinfo.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace zlibvideo {
namespace {

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool LocaleIsUtf8() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) return false;
  const bool utf8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
  freelocale(locale);
  return utf8;
}

}  // namespace

std::size_t TerminalWidth(int descriptor) {
  constexpr std::size_t kUsualWidth = 80;
  const std::string_view wanted = Environment("COLUMNS");
  std::size_t columns = 0;
  std::from_chars(wanted.data(), wanted.data() + wanted.size(), columns);
  if (columns != 0) return columns;
  winsize size = {};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualWidth;
  return size.ws_col;
}

Terminal Terminal::OfStandardOutput() {
  Terminal terminal;
  if (isatty(STDOUT_FILENO) == 0) return terminal;
  terminal.unicode = LocaleIsUtf8();
  terminal.color = Environment("NO_COLOR").empty() && Environment("TERM") != "dumb";
  terminal.width = TerminalWidth(STDOUT_FILENO);
  return terminal;
}

std::string Terminal::Styled(const std::string& text, Style style) const {
  if (!color) return text;
  return "\x1B[" + std::to_string(static_cast<int>(style)) + "m" + text + "\x1B[0m";
}

}  // namespace zlibvideo
