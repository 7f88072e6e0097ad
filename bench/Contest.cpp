#include "bench/Contest.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace zlibvideo::bench {

namespace {

/// Calls before the one that is timed, so that no contender profits or suffers from what the one
/// before it left in the cache.
constexpr int kUntimedCalls = 2;
constexpr int kRepetitions = 7;
constexpr double kMinSeconds = 0.05;

void RunContest(benchmark::State& state, double bytes, const std::vector<Contender>& contenders) {
  std::vector<double> best(contenders.size(), std::numeric_limits<double>::max());
  for (auto _ : state) {
    double total = 0;
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      for (int call = 0; call < kUntimedCalls; ++call) contenders[i].run();
      const double seconds = SecondsOf(contenders[i].run);
      benchmark::ClobberMemory();
      best[i] = std::min(best[i], seconds);
      total += seconds;
    }
    state.SetIterationTime(total);
  }
  state.counters[kBytesCounter] = bytes;
  for (std::size_t i = 0; i < contenders.size(); ++i) {
    state.counters[std::to_string(i) + contenders[i].name] = best[i];
  }
}

}  // namespace

void RegisterContest(const std::string& name, double bytes, std::vector<Contender> contenders) {
  const auto run = [bytes, contenders = std::move(contenders)](benchmark::State& state) {
    RunContest(state, bytes, contenders);
  };
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->UseManualTime()
      ->Repetitions(kRepetitions)
      ->MinTime(kMinSeconds);
}

}  // namespace zlibvideo::bench
