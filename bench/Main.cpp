// zlibvideo_bench [STREAM...] [OPTION...]: benchmarks of streams and of single steps, with the
// options of Google Benchmark.

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <list>
#include <stdexcept>

#include "bench/Bench.h"
#include "tools/stream/MessageFile.h"

namespace {

using zlibvideo::bench::Stream;

/// Throws `std::runtime_error` if the file cannot be read whole.
Stream ReadStream(const std::string& path) {
  using Result = zlibvideo::MessageFileReader::Result;
  Stream stream{std::filesystem::path(path).stem().string(), {}};
  zlibvideo::MessageFileReader reader(path);
  zlibvideo::FileMessage message;
  Result result = reader.Next(&message);
  for (; result == Result::kMessage; result = reader.Next(&message)) {
    stream.messages.emplace_back(message.bytes, message.bytes + message.length);
  }
  if (result != Result::kEnd) throw std::runtime_error(reader.Problem());
  return stream;
}

void Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::AddCustomContext("zlib", zlibVersion());
  std::list<Stream> streams;
  for (int i = 1; i < argc; ++i) {
    const Stream& stream = streams.emplace_back(ReadStream(argv[i]));
    zlibvideo::bench::RegisterMessages(stream);
    zlibvideo::bench::RegisterPictureFiles(stream);
    zlibvideo::bench::RegisterConversion(stream);
  }
  benchmark::RunSpecifiedBenchmarks();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zlibvideo_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
