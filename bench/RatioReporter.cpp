#include "bench/RatioReporter.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

#include "bench/Contest.h"
#include "bench/Units.h"

namespace zlibvideo::bench {
namespace {

constexpr const char* kItemsCounter = "items_per_second";

}  // namespace

bool RatioReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type == Run::RT_Iteration) Gather(run, &fResults[run.family_index]);
  }
}

void RatioReporter::Gather(const Run& run, Result* result) {
  const std::string& path = run.run_name.function_name;
  const std::size_t slash = path.rfind('/');
  result->topic = path.substr(0, slash);
  result->name = path.substr(slash + 1);
  const auto keepBest = [result](const std::string& contender, double seconds) {
    const auto [entry, isNew] = result->seconds.emplace(contender, seconds);
    if (!isNew) entry->second = std::min(entry->second, seconds);
  };
  const double average = run.real_accumulated_time / static_cast<double>(run.iterations);
  if (!run.counters.contains(kBytesCounter)) keepBest("", average);
  for (const auto& [name, counter] : run.counters) {
    if (name == kBytesCounter) {
      result->bytes = counter.value;
    } else if (name == kFrameCounter) {
      result->isFrame = counter.value != 0;
    } else if (name == kItemsCounter) {
      result->itemsPerCall = counter.value * average;
    } else {
      keepBest(name, counter.value);
    }
  }
}

void RatioReporter::PrintTables() const {
  std::string topic;
  for (const auto& [index, result] : fResults) {
    if (result.topic != topic) std::printf("\n%s\n", result.topic.c_str());
    topic = result.topic;
    if (result.bytes > 0) {
      PrintContest(result);
      continue;
    }
    const double seconds = result.seconds.begin()->second;
    std::printf("  %-14s %12.2f us %10.1f ns a block\n", result.name.c_str(),
                seconds * kMicroseconds, seconds * kNanoseconds / result.itemsPerCall);
  }
}

void RatioReporter::PrintContest(const Result& result) {
  std::printf("  %s\n", result.name.c_str());
  const auto& [firstCounter, first] = *result.seconds.begin();
  for (const auto& [counter, seconds] : result.seconds) {
    std::printf("    %-12s %10.1f us %8.0f MB/s", counter.c_str() + 1, seconds * kMicroseconds,
                result.bytes / seconds / kMegabyte);
    if (result.isFrame) std::printf(" %8.0f frames/s", 1 / seconds);
    std::printf(" %6.2f times the speed of %s\n", first / seconds, firstCounter.c_str() + 1);
  }
}

}  // namespace zlibvideo::bench
