#ifndef ZLIBVIDEO_TOOLS_TERMINAL_PROGRESSBAR_H
#define ZLIBVIDEO_TOOLS_TERMINAL_PROGRESSBAR_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace zlibvideo {

/// One line on stderr that says how far the work has come. It shows itself only when stderr is a
/// terminal, redraws a few times a second at most, and is gone when it is destroyed.
class ProgressBar {
 public:
  /// `noun` is what is counted ("message"); `total` is in the same measure as `done` of `Update`,
  /// nothing when it is not known.
  ProgressBar(bool wanted, std::string noun, std::optional<std::uint64_t> total);
  ~ProgressBar() { Clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Update(std::uint64_t done, std::uint64_t count);
  /// Takes the bar off the screen; the next `Update` may bring it back.
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
