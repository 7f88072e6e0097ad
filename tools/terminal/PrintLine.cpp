#include "tools/terminal/PrintLine.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tools/terminal/Wording.h"

namespace zlibvideo {

bool CanEraseLine() {
  const char* const kind = std::getenv("TERM");
  return isatty(STDERR_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

void PrintLine(const std::string& text) {
  std::string line = "zlibvideo: " + Printable(text) + "\n";
  if (CanEraseLine()) line.insert(0, kEraseTerminalLine);
  std::fputs(line.c_str(), stderr);
}

void PrintNote(const std::string& text) {
  std::fputs((Printable(text) + "\n").c_str(), stderr);
}

}  // namespace zlibvideo
