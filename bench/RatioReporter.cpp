#include "bench/RatioReporter.h"

#include <cstdio>

namespace zlibvideo::bench {
namespace {

constexpr double kMega = 1e6;
constexpr double kMicro = 1e6;
constexpr double kNano = 1e9;

double CounterOf(const benchmark::BenchmarkReporter::Run& run, const char* name) {
  const auto found = run.counters.find(name);
  return found == run.counters.end() ? 0.0 : found->second.value;
}

}  // namespace

bool RatioReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    const std::string& path = run.run_name.function_name;
    if (run.error_occurred) {
      std::fprintf(stderr, "%s: %s\n", path.c_str(), run.error_message.c_str());
      continue;
    }
    Contender& contender = fContenders[run.family_index];
    const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
    if (!contender.name.empty() && contender.seconds <= seconds) continue;
    const std::size_t first = path.find('/');
    const std::size_t last = path.rfind('/');
    contender.topic = path.substr(0, first);
    contender.caseName = path.substr(first + 1, last - first - 1);
    contender.name = path.substr(last + 1);
    contender.seconds = seconds;
    contender.bytesPerSecond = CounterOf(run, "bytes_per_second");
    contender.itemsPerSecond = CounterOf(run, "items_per_second");
  }
}

void RatioReporter::PrintTables() const {
  std::map<std::string, std::map<std::string, std::vector<const Contender*>>> topics;
  for (const auto& [index, contender] : fContenders) {
    topics[contender.topic][contender.caseName].push_back(&contender);
  }
  for (const auto& [topic, cases] : topics) {
    std::printf("\n%s\n", topic.c_str());
    for (const auto& [name, contenders] : cases) {
      std::printf("  %s\n", name.c_str());
      for (const Contender* contender : contenders) PrintContender(*contender, *contenders.front());
    }
  }
}

void RatioReporter::PrintContender(const Contender& contender, const Contender& first) {
  std::printf("    %-16s %12.2f us", contender.name.c_str(), contender.seconds * kMicro);
  if (contender.bytesPerSecond > 0) {
    std::printf(" %8.0f MB/s  %5.2f x %s", contender.bytesPerSecond / kMega,
                first.seconds / contender.seconds, first.name.c_str());
    if (contender.itemsPerSecond > 0) std::printf(" %8.0f frames/s", contender.itemsPerSecond);
  } else if (contender.itemsPerSecond > 0) {
    std::printf(" %8.1f ns a block", kNano / contender.itemsPerSecond);
  }
  std::printf("\n");
}

}  // namespace zlibvideo::bench
