#ifndef ZLIBVIDEO_BENCH_RATIOREPORTER_H
#define ZLIBVIDEO_BENCH_RATIOREPORTER_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zlibvideo::bench {

/// Gathers the best repetition of each benchmark and prints them as tables. A name is
/// TOPIC/CASE/CONTENDER; a contender that processes bytes is set against the first of its case.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void PrintTables() const;

 private:
  struct Contender {
    std::string topic;
    std::string caseName;
    std::string name;
    double seconds = 0;
    double bytesPerSecond = 0;
    double itemsPerSecond = 0;
  };

  static void PrintContender(const Contender& contender, const Contender& first);

  /// By the order in which they were registered.
  std::map<std::int64_t, Contender> fContenders;
};

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_RATIOREPORTER_H
