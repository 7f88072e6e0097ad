#ifndef ZLIBVIDEO_TOOLS_TERMINAL_STANDARDERROR_H
#define ZLIBVIDEO_TOOLS_TERMINAL_STANDARDERROR_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace zlibvideo {

/// Prints "zlibvideo: TEXT" to stderr, made `Printable`, in place of a `ProgressLine`.
void PrintLine(const std::string& text);

/// Prints TEXT to stderr, made `Printable`.
void PrintNote(const std::string& text);

/// A line on stderr that shows the progress of the work, such as "28 messages (45 %)". It is drawn
/// at most ten times a second, and its destructor erases it.
class ProgressLine {
 public:
  /// `noun` names the things that are counted ("message"). `total` has the unit of `done` in
  /// `Update`. It is absent when unknown.
  ProgressLine(bool wanted, std::string noun, std::optional<std::uint64_t> total);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void Update(std::uint64_t done, std::uint64_t count);

 private:
  bool fEnabled;
  bool fDrawn = false;
  std::string fNoun;
  std::optional<std::uint64_t> fTotal;
  std::chrono::steady_clock::time_point fNextDraw;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_STANDARDERROR_H
