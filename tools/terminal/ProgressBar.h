#ifndef ZLIBVIDEO_TOOLS_TERMINAL_PROGRESSBAR_H
#define ZLIBVIDEO_TOOLS_TERMINAL_PROGRESSBAR_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace zlibvideo {

/// A line on stderr that shows the progress of the work, if stderr is a terminal. It is drawn at
/// most ten times a second, and its destructor erases it.
class ProgressBar {
 public:
  /// `noun` names the things that are counted ("message"). `total` has the unit of `done` in
  /// `Update`; it is absent when unknown.
  ProgressBar(bool wanted, std::string noun, std::optional<std::uint64_t> total);
  ~ProgressBar() { Clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Update(std::uint64_t done, std::uint64_t count);
  /// Erases the bar. The next `Update` may draw it again.
  void Clear();

 private:
  void Draw(std::uint64_t done, std::uint64_t count);

  bool fEnabled;
  bool fDrawn = false;
  std::string fNoun;
  std::optional<std::uint64_t> fTotal;
  std::chrono::steady_clock::time_point fNextDraw;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_PROGRESSBAR_H
