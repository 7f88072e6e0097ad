// The linker routes this program's calls of zlib to these functions (--wrap). Shared libraries call
// zlib directly. For a single thread.

#include "bench/Bench.h"

#include <zlib.h>

#include <algorithm>
#include <chrono>

namespace zlibvideo::bench {
namespace {

using Clock = std::chrono::steady_clock;

bool running = false;
Clock::duration total = {};
int calls = 0;

/// Runs `call`, which calls zlib, and returns its result.
template <typename Call>
int Timed(Call call) {
  if (!running) return call();
  running = false;  // zlib from an archive calls its own functions through the linker's route
  const auto start = Clock::now();
  const int result = call();
  total += Clock::now() - start;
  ++calls;
  running = true;
  return result;
}

}  // namespace

void StartZlibClock() {
  total = {};
  calls = 0;
  running = true;
}

double StopZlibClock() {
  running = false;
  // A call seems longer by the time between two readings of the clock.
  static const Clock::duration readingTime = [] {
    constexpr int kReadings = 10000;
    auto least = Clock::duration::max();
    for (int i = 0; i < kReadings; ++i) {
      const auto start = Clock::now();
      least = std::min(least, Clock::now() - start);
    }
    return least;
  }();
  return std::chrono::duration<double>(total - calls * readingTime).count();
}

extern "C" int __real_inflateInit2_(z_stream*, int, const char*, int);
extern "C" int __wrap_inflateInit2_(z_stream* stream, int bits, const char* version, int size) {
  return Timed([=] { return __real_inflateInit2_(stream, bits, version, size); });
}

extern "C" int __real_inflate(z_stream*, int);
extern "C" int __wrap_inflate(z_stream* stream, int flush) {
  return Timed([=] { return __real_inflate(stream, flush); });
}

extern "C" int __real_inflateEnd(z_stream*);
extern "C" int __wrap_inflateEnd(z_stream* stream) {
  return Timed([=] { return __real_inflateEnd(stream); });
}

extern "C" int __real_uncompress(Bytef*, uLongf*, const Bytef*, uLong);
extern "C" int __wrap_uncompress(Bytef* out, uLongf* size, const Bytef* in, uLong inSize) {
  return Timed([=] { return __real_uncompress(out, size, in, inSize); });
}

}  // namespace zlibvideo::bench
