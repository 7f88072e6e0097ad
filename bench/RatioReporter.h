#ifndef ZLIBVIDEO_BENCH_RATIOREPORTER_H
#define ZLIBVIDEO_BENCH_RATIOREPORTER_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zlibvideo::bench {

/// Gathers the best repetition of each benchmark and prints them as tables. A name is TOPIC/CASE,
/// where TOPIC may contain slashes; the contenders of a contest are set against the first.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void PrintTables() const;

 private:
  struct Result {
    std::string topic;
    std::string name;
    /// Bytes that a call yields; 0 when this is no contest.
    double bytes = 0;
    /// Whether a call of a contest yields a whole frame.
    bool isFrame = false;
    /// Best seconds of each contender by its counter, or of the one that there is.
    std::map<std::string, double> seconds;
    double itemsPerCall = 0;
  };

  static void Gather(const Run& run, Result* result);
  static void PrintContest(const Result& result);

  /// By the order in which they were registered.
  std::map<std::int64_t, Result> fResults;
};

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_RATIOREPORTER_H
