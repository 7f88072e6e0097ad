#include "tools/terminal/StandardError.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr std::uint64_t kPercent = 100;
constexpr std::chrono::milliseconds kRedrawInterval(100);
/// Makes a terminal start its current line over.
constexpr const char* kEraseLine = "\r\x1b[K";

bool CanEraseLine() {
  const char* const kind = std::getenv("TERM");
  return isatty(STDERR_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

}  // namespace

void PrintLine(const std::string& text) {
  PrintNote("zlibvideo: " + text);
}

void PrintNote(const std::string& text) {
  const std::string line = (CanEraseLine() ? kEraseLine : "") + Printable(text) + "\n";
  std::fputs(line.c_str(), stderr);
}

ProgressLine::ProgressLine(bool wanted, std::string noun, std::optional<std::uint64_t> total)
    : fEnabled(wanted && CanEraseLine()),
      fNoun(std::move(noun)),
      fTotal(total),
      fNextDraw(std::chrono::steady_clock::now() + kRedrawInterval) {}

ProgressLine::~ProgressLine() {
  if (fDrawn) std::fputs(kEraseLine, stderr);
}

void ProgressLine::Update(std::uint64_t done, std::uint64_t count) {
  const auto now = std::chrono::steady_clock::now();
  if (!fEnabled || now < fNextDraw) return;
  fNextDraw = now + kRedrawInterval;
  fDrawn = true;
  std::string line = kEraseLine + Counted(count, fNoun);
  if (fTotal.value_or(0) > 0) {
    line += " (" + std::to_string(std::min(done, *fTotal) * kPercent / *fTotal) + " %)";
  }
  std::fputs(line.c_str(), stderr);
}

}  // namespace zlibvideo
