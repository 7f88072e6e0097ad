#include "tools/cli/Terminal.h"

#include <langinfo.h>
#include <locale.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "tools/cli/TerminalWidth.h"

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
