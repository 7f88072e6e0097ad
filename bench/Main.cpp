// zlibvideo_bench [STREAM...] [--benchmark_...]: the isolated steps, then each stream, then tables.
// --benchmark_filter picks steps by name, streams as "stream/NAME", and streams beside files of
// other formats as "formats/NAME".

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <regex>
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
using zlibvideo::bench::TimedStream;

/// Repetitions of all benchmarks come in a shuffled order, so that a slow minute of the machine
/// falls on all of them.
constexpr const char* kShuffle = "--benchmark_enable_random_interleaving=true";

/// Initialises the library with the default and then the caller's own flags; returns what is left
/// of the arguments.
std::vector<char*> Initialize(int argc, char** argv) {
  std::vector<char*> arguments = {argv[0], const_cast<char*>(kShuffle)};
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
      for (const auto& call : floor.calls) {
        if (call.reduced && count++ % kOneIn == 0) codes.push_back(runner.Decompress(floor, call));
      }
    }
    if (!codes.empty()) break;
  }
  return codes;
}

/// Applies the library's filter, a leading '-' of which inverts it, to a name TOPIC/CASE.
bool IsWanted(const std::string& name) {
  std::string filter = benchmark::GetBenchmarkFilter();
  const bool inverted = filter.starts_with('-');
  if (inverted) filter.erase(0, 1);
  return filter.empty() || filter == "all" ||
         std::regex_search(name, std::regex(filter)) != inverted;
}

/// Times the streams that are wanted, with or without the other formats, and prints their tables.
void PlayStreams(std::vector<PreparedStream>* streams) {
  if (streams->empty()) return;
  std::puts(
      "\nfloor: the calls of zlib and one memcpy of the bitmap; undrawn does without the latter");
  std::vector<TimedStream> timed;
  for (PreparedStream& stream : *streams) {
    const bool withFormats = IsWanted("formats/" + stream.file.name);
    if (!withFormats && !IsWanted("stream/" + stream.file.name)) continue;
    if (withFormats) stream.EncodeStills();
    timed.push_back({&stream, TimeStream(stream)});
    PrintStreamTimes(stream, timed.back().times);
  }
  PrintSummary(timed);
}

void Run(const std::vector<char*>& paths) {
  std::vector<PreparedStream> streams;
  for (const char* path : paths) {
    if (path[0] == '-') throw std::invalid_argument(std::string(path) + " is no option");
    streams.emplace_back(path);
  }

  std::printf("zlib %s\n", zlibVersion());
  zlibvideo::bench::RegisterComposition();
  zlibvideo::bench::RegisterConversion(RecordedCodes(streams));
  zlibvideo::bench::RegisterGrid();
  zlibvideo::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintTables();
  PlayStreams(&streams);
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
