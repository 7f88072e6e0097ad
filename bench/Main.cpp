// zlibvideo_bench [STREAM...] [--benchmark_...]: the isolated steps, then each stream, then tables.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/IsolatedBenchmarks.h"
#include "bench/RatioReporter.h"
#include "bench/StreamTimes.h"

namespace {

using zlibvideo::bench::Bytes;
using zlibvideo::bench::FloorRunner;
using zlibvideo::bench::PreparedStream;

/// Repetitions of all benchmarks come in a shuffled order, so that a slow minute of the machine
/// falls on all of them. They are short, so that some go undisturbed.
constexpr const char* kDefaults[] = {"--benchmark_enable_random_interleaving=true",
                                     "--benchmark_repetitions=25", "--benchmark_min_time=0.003"};

/// Initialises the library with the defaults and then the caller's own flags; returns what is
/// left of the arguments.
std::vector<char*> Initialize(int argc, char** argv) {
  std::vector<char*> arguments = {argv[0]};
  for (const char* flag : kDefaults) arguments.push_back(const_cast<char*>(flag));
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  return {arguments.begin() + 1, arguments.begin() + count};
}

/// Colour-reduced streams of blocks, from the first file that has any. One in several is enough,
/// and keeps a repetition short.
std::vector<Bytes> RecordedCodes(const std::vector<PreparedStream>& streams) {
  constexpr std::size_t kOneIn = 16;
  std::vector<Bytes> codes;
  for (const PreparedStream& stream : streams) {
    FloorRunner runner;
    std::size_t count = 0;
    for (const auto& floor : stream.floors) {
      for (Bytes& code : runner.CollectReduced(floor)) {
        if (count++ % kOneIn == 0) codes.push_back(std::move(code));
      }
    }
    if (!codes.empty()) break;
  }
  return codes;
}

void Run(const std::vector<char*>& paths) {
  std::vector<PreparedStream> streams;
  for (const char* path : paths) {
    if (path[0] == '-') throw std::invalid_argument(std::string(path) + " is no option");
    streams.emplace_back(path);
  }

  zlibvideo::bench::RegisterComposition();
  zlibvideo::bench::RegisterConversion(RecordedCodes(streams));
  zlibvideo::bench::RegisterGrid();
  zlibvideo::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintTables();
  for (const PreparedStream& stream : streams) {
    PrintStreamTimes(stream, TimeStream(stream));
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(Initialize(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zlibvideo_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
