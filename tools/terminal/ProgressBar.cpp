#include "tools/terminal/ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "tools/terminal/PrintLine.h"
#include "tools/terminal/Terminal.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr std::size_t kMaxBarWidth = 30;
constexpr std::uint64_t kPercent = 100;
constexpr std::chrono::milliseconds kRedrawInterval(100);

/// A bar of the cells that fit into `room` characters; empty if no cell fits.
std::string Bar(std::uint64_t part, std::uint64_t total, std::size_t room) {
  constexpr std::size_t kFrameWidth = sizeof("[] ") - 1;
  if (room <= kFrameWidth) return {};
  const std::size_t width = std::min(kMaxBarWidth, room - kFrameWidth);
  const auto filled = static_cast<std::size_t>(part * width / total);
  return "[" + std::string(filled, '#') + std::string(width - filled, ' ') + "] ";
}

}  // namespace

ProgressBar::ProgressBar(bool wanted, std::string noun, std::optional<std::uint64_t> total)
    : fEnabled(wanted && CanEraseLine()),
      fNoun(std::move(noun)),
      fTotal(total),
      fNextDraw(std::chrono::steady_clock::now() + kRedrawInterval) {}

void ProgressBar::Update(std::uint64_t done, std::uint64_t count) {
  if (!fEnabled) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < fNextDraw) return;
  fNextDraw = now + kRedrawInterval;
  Draw(done, count);
}

void ProgressBar::Clear() {
  if (!fDrawn) return;
  std::fputs(kEraseTerminalLine, stderr);
  fDrawn = false;
}

void ProgressBar::Draw(std::uint64_t done, std::uint64_t count) {
  // A longer line would wrap, and only its last part would be erased.
  const std::size_t width = TerminalWidth(STDERR_FILENO) - 1;
  std::string line = Counted(count, fNoun);
  if (fTotal.has_value() && *fTotal > 0) {
    const std::uint64_t part = std::min(done, *fTotal);
    line.insert(0, std::to_string(part * kPercent / *fTotal) + " %  ");
    line.insert(0, Bar(part, *fTotal, width - std::min(width, line.size())));
  }
  line = kEraseTerminalLine + line.substr(0, width);
  std::fputs(line.c_str(), stderr);
  fDrawn = true;
}

}  // namespace zlibvideo
