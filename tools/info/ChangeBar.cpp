#include "tools/info/ChangeBar.h"

#include <algorithm>
#include <array>

namespace zlibvideo {
namespace {

/// The first for no change at all, the last for every block.
constexpr std::array<const char*, 9> kUnicodeLevels = {"·", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::array<const char*, 9> kAsciiLevels = {".", ":", "-", "=", "+", "*", "%", "@", "#"};

int CountChanged(const MessageReport& report, int firstColumn, int endColumn) {
  int changed = 0;
  for (int row = 0; row < report.outline.gridHeight; ++row) {
    for (int column = firstColumn; column < endColumn; ++column) {
      if (report.CellAt(row, column) != RecordKind::kEmpty) ++changed;
    }
  }
  return changed;
}

}  // namespace

std::string ChangeBar(const MessageReport& report, int mostWidth, const Terminal& terminal) {
  const auto& levels = terminal.unicode ? kUnicodeLevels : kAsciiLevels;
  const int highest = static_cast<int>(levels.size()) - 1;
  const int columns = report.outline.gridWidth;
  const int width = std::min(columns, mostWidth);
  std::string bar;
  for (int cell = 0; cell < width; ++cell) {
    const int first = cell * columns / width;
    const int end = (cell + 1) * columns / width;
    const int blocks = (end - first) * report.outline.gridHeight;
    // Rounded up, so that a single block shows, and full only when every block changed.
    const int changed = CountChanged(report, first, end);
    const int level = changed == blocks ? highest : (changed * (highest - 1) + blocks - 1) / blocks;
    bar += levels[static_cast<std::size_t>(level)];
  }
  return bar;
}

}  // namespace zlibvideo
