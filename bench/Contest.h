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

/// Counter of a contest that holds the bytes that each contender yields. The other counters are the
/// contenders' best times in seconds; a digit before the name keeps them in order.
inline constexpr const char* kBytesCounter = "bytes";

/// Registers a benchmark in which at most ten contenders take turns, and the best time of each
/// counts. For work that is long against the clock and yields `bytes`.
void RegisterContest(const std::string& name, double bytes, std::vector<Contender> contenders);

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_CONTEST_H
