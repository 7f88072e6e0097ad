#ifndef ZLIBVIDEO_BENCH_CONTEST_H
#define ZLIBVIDEO_BENCH_CONTEST_H

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace zlibvideo::bench {

/// Seconds that one call of `action` takes.
template <typename Action>
double SecondsOf(Action&& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// One way to do a piece of work.
struct Contender {
  std::string name;
  std::function<void()> run;
};

/// What each call of a contender yields; no frame where a call is only a part of one.
struct Yield {
  double bytes = 0;
  bool isFrame = false;
};

/// Counters of a contest that hold its `Yield`. The other counters are the contenders' best times
/// in seconds; a digit before the name keeps them in order.
inline constexpr const char* kBytesCounter = "bytes";
inline constexpr const char* kFrameCounter = "frame";

/// Registers a benchmark in which at most ten contenders take turns, and the best time of each
/// counts. For work that is long against the clock.
void RegisterContest(const std::string& name, Yield yield, std::vector<Contender> contenders);

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_CONTEST_H
