#include "tools/terminal/PrintLine.h"

#include <unistd.h>

#include <cstdio>

#include "tools/terminal/Wording.h"

namespace zlibvideo {

void PrintLine(const std::string& text) {
  std::string line = "zlibvideo: " + Printable(text) + "\n";
  if (isatty(STDERR_FILENO) == 1) line.insert(0, kEraseTerminalLine);
  std::fputs(line.c_str(), stderr);
}

}  // namespace zlibvideo
