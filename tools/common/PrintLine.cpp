#include "tools/common/PrintLine.h"

#include <unistd.h>

#include <cstdio>

namespace zlibvideo {

void PrintLine(const std::string& text) {
  std::string line = "zlibvideo: " + text;
  for (char& c : line) {
    const auto code = static_cast<unsigned char>(c);
    if (code < ' ' || code == 0x7F) c = '?';
  }
  line += '\n';
  if (isatty(STDERR_FILENO) == 1) line.insert(0, kEraseTerminalLine);
  std::fputs(line.c_str(), stderr);
}

}  // namespace zlibvideo
