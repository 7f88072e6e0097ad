#include "tools/common/ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "tools/common/PrintLine.h"
#include "tools/common/Wording.h"

namespace zlibvideo {
namespace {

constexpr std::uint64_t kBarWidth = 30;
constexpr std::uint64_t kPercent = 100;
constexpr std::chrono::milliseconds kRedrawInterval(100);

}  // namespace

ProgressBar::ProgressBar(bool wanted, std::string noun, std::optional<std::uint64_t> total)
    : fEnabled(wanted && isatty(STDERR_FILENO) == 1),
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
  std::string line = kEraseTerminalLine;
  if (fTotal.has_value() && *fTotal > 0) {
    const std::uint64_t part = std::min(done, *fTotal);
    const auto filled = static_cast<std::size_t>(part * kBarWidth / *fTotal);
    line += '[';
    line.append(filled, '#').append(kBarWidth - filled, ' ');
    line += "] ";
    line += std::to_string(part * kPercent / *fTotal);
    line += " %  ";
  }
  line += Counted(count, fNoun);
  std::fputs(line.c_str(), stderr);
  fDrawn = true;
}

}  // namespace zlibvideo
