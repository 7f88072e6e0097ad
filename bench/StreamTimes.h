#ifndef ZLIBVIDEO_BENCH_STREAMTIMES_H
#define ZLIBVIDEO_BENCH_STREAMTIMES_H

#include <array>
#include <string>
#include <vector>

#include "bench/Floor.h"
#include "bench/StreamFile.h"

namespace zlibvideo::bench {

enum Way { kDrawn, kNotDrawn, kFloor, kFloorAndConversion, kWays };

/// Seconds by the way that a message is treated.
using Times = std::array<double, kWays>;

/// A stream with the floor of each of its messages.
struct PreparedStream {
  /// Reads a message file. Throws `ToolError` when that fails and `std::runtime_error` when a
  /// message does not decode.
  explicit PreparedStream(const std::string& path);

  StreamFile file;
  std::vector<MessageFloor> floors;
  bool hasReduced = false;
};

/// Plays the stream with drawing, without drawing, and as its floor, in turns and many times over;
/// returns for each message the best time of each, since whatever else the machine does only ever
/// adds to it. Throws `std::runtime_error` when a message fails.
std::vector<Times> TimeStream(const PreparedStream& stream);

/// Prints a table of the stream's key, busy and calm messages and of all of them.
void PrintStreamTimes(const PreparedStream& stream, const std::vector<Times>& times);

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_STREAMTIMES_H
