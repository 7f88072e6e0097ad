#ifndef ZLIBVIDEO_BENCH_STREAMTIMES_H
#define ZLIBVIDEO_BENCH_STREAMTIMES_H

#include <array>
#include <string>
#include <vector>

#include "bench/Floor.h"
#include "bench/StillFormat.h"
#include "bench/StreamFile.h"

namespace zlibvideo::bench {

/// What is timed: the decoder, what no decoder can avoid, and files of the same picture in each of
/// `StillFormat::All`.
enum Way {
  kDrawn,
  kNotDrawn,
  kFloor,
  kFloorAndConversion,
  kFirstStill,
  kWays = kFirstStill + StillFormat::kCount
};

/// Seconds by the way that a message is treated; 0 for those ways that the stream does not have.
using Times = std::array<double, kWays>;

/// A stream with the floor of each of its messages.
struct PreparedStream {
  /// Reads a message file. Throws `ToolError` when that fails and `std::runtime_error` when a
  /// message does not decode.
  explicit PreparedStream(const std::string& path);
  /// Adds `stills`, and checks that they decode to the decoder's pictures byte for byte. Throws
  /// `std::runtime_error` when one does not.
  void EncodeStills();

  StreamFile file;
  std::vector<MessageFloor> floors;
  bool hasReduced = false;
  /// By format, the picture after each message as a file; empty unless asked for.
  std::vector<std::vector<Bytes>> stills;
};

/// Plays the stream with drawing, without drawing, as its floor, and its pictures from files of
/// other formats, in turns and many times over; returns for each message the best time of each,
/// since whatever else the machine does only ever adds to it. Throws `std::runtime_error` when a
/// message fails.
std::vector<Times> TimeStream(const PreparedStream& stream);

/// Prints a table of the stream's key, busy and calm messages and of all of them.
void PrintStreamTimes(const PreparedStream& stream, const std::vector<Times>& times);

struct TimedStream {
  const PreparedStream* stream = nullptr;
  std::vector<Times> times;
};

/// Prints a line for the decoder, the floor and each format of each stream: name of the stream,
/// what it is, and milliseconds, pictures a second and bytes on average. script/bench-zlibs reads
/// them.
void PrintSummary(const std::vector<TimedStream>& streams);

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_STREAMTIMES_H
