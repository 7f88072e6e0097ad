#include "bench/Contest.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>
#include <random>
#include <utility>

namespace zlibvideo::bench {

namespace {

/// Calls before the one that is timed, so that a contender finds its own data in the cache.
/// Pictures larger than the cache still feel what ran before, so the order is shuffled every time.
constexpr int kUntimedCalls = 2;
constexpr int kRepetitions = 7;
constexpr double kMinSeconds = 0.05;

void RunContest(benchmark::State& state, Yield yield, const std::vector<Contender>& contenders) {
  std::vector<double> best(contenders.size(), std::numeric_limits<double>::max());
  std::vector<std::size_t> order(contenders.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::mt19937 random(1);
  for (auto _ : state) {
    double total = 0;
    std::shuffle(order.begin(), order.end(), random);
    for (const std::size_t i : order) {
      for (int call = 0; call < kUntimedCalls; ++call) contenders[i].run();
      const double seconds = SecondsOf(contenders[i].run);
      benchmark::ClobberMemory();
      best[i] = std::min(best[i], seconds);
      total += seconds;
    }
    state.SetIterationTime(total);
  }
  state.counters[kBytesCounter] = yield.bytes;
  state.counters[kFrameCounter] = yield.isFrame ? 1 : 0;
  for (std::size_t i = 0; i < contenders.size(); ++i) {
    state.counters[std::to_string(i) + contenders[i].name] = best[i];
  }
}

}  // namespace

void RegisterContest(const std::string& name, Yield yield, std::vector<Contender> contenders) {
  const auto run = [yield, contenders = std::move(contenders)](benchmark::State& state) {
    RunContest(state, yield, contenders);
  };
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->UseManualTime()
      ->Repetitions(kRepetitions)
      ->MinTime(kMinSeconds);
}

}  // namespace zlibvideo::bench
