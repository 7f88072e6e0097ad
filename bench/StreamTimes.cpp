#include "bench/StreamTimes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <stdexcept>

#include "bench/Contest.h"
#include "bench/Units.h"
#include "host/standin/StandInMessage.h"
#include "host/standin/StandInVideoObject.h"

namespace zlibvideo::bench {
namespace {

/// A message with more payloads than this is busy: something more than a cursor moves.
constexpr std::size_t kMaxCalmPayloads = 8;

/// How often each message is decoded: short streams more often than long ones.
constexpr int kMinRounds = 15;
constexpr int kDecodings = 2000;

enum Group { kKey, kBusy, kCalm, kAll, kGroups };
constexpr const char* kGroupNames[kGroups] = {"key", "busy", "calm", "all"};

Group GroupOf(const MessageFloor& floor) {
  if (floor.header.IsKeyFrame()) return kKey;
  return floor.calls.size() > kMaxCalmPayloads ? kBusy : kCalm;
}

class Player {
 public:
  void Decode(const Bytes& message, bool skipPush) {
    StandInMessage hostMessage(Writable(message.data()),
                               static_cast<std::uint32_t>(message.size()));
    if (fDecoder.DecompressVideoMessage(fVideo.Ref(), &hostMessage, false, skipPush) != 1) {
      throw std::runtime_error("a message does not decode");
    }
  }

 private:
  ZLibVideoDecompressor fDecoder{nullptr, nullptr};
  StandInVideoObject fVideo;
};

/// All ways, each with buffers of its own, so that none finds the cache warmed by another.
struct Players {
  Player drawn;
  Player notDrawn;
  FloorRunner floor;
  FloorRunner floorAndConversion;

  void Run(int way, const Bytes& message, const MessageFloor& messageFloor) {
    switch (way) {
      case kDrawn:
        return drawn.Decode(message, false);
      case kNotDrawn:
        return notDrawn.Decode(message, true);
      case kFloor:
        return floor.Run(messageFloor, false);
      default:
        return floorAndConversion.Run(messageFloor, true);
    }
  }
};

struct GroupTotal {
  int messages = 0;
  double pixelBytes = 0;
  Times seconds = {};
};

void PrintGroup(const char* name, const GroupTotal& total, bool hasReduced) {
  const Times& s = total.seconds;
  std::printf(
      "  %-5s %5d %10.3f %10.3f %10.3f %8.2f %8.2f", name, total.messages,
      s[kDrawn] * kMilliseconds / total.messages, s[kNotDrawn] * kMilliseconds / total.messages,
      s[kFloor] * kMilliseconds / total.messages, s[kDrawn] / s[kFloor], s[kNotDrawn] / s[kFloor]);
  if (hasReduced) {
    std::printf(" %8.2f", s[kDrawn] / s[kFloorAndConversion]);
  } else {
    std::printf(" %8s", "-");
  }
  std::printf(" %9.0f %9.0f\n", total.messages / s[kDrawn],
              total.pixelBytes / s[kDrawn] / kMegabyte);
}

}  // namespace

PreparedStream::PreparedStream(const std::string& path) : file(StreamFile::Read(path)) {
  // Decoders go through the stream over and over. The second round is the first in which blocks
  // hold what a whole round left; from then on all rounds are alike.
  constexpr int kRoundsUntilAlike = 2;
  FloorFinder finder;
  try {
    for (int round = 0; round < kRoundsUntilAlike; ++round) {
      floors.clear();
      for (const Bytes& message : file.messages) floors.push_back(finder.Find(message));
    }
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path + ": message " + std::to_string(floors.size()) + " " +
                             error.what());
  }
  for (const MessageFloor& floor : floors) {
    hasReduced = hasReduced || std::any_of(floor.calls.begin(), floor.calls.end(),
                                           [](const ZlibCall& call) { return call.reduced; });
  }
}

std::vector<Times> TimeStream(const PreparedStream& stream) {
  const int rounds =
      std::max(kMinRounds, kDecodings / static_cast<int>(stream.file.messages.size()));
  const auto players = std::make_unique<Players>();
  const std::vector<Bytes>& messages = stream.file.messages;
  Times worst;
  worst.fill(std::numeric_limits<double>::max());
  std::vector<Times> best(messages.size(), worst);
  const int ways = stream.hasReduced ? kWays : kFloorAndConversion;
  // Each way goes through the whole stream before the next does, so that each finds the cache as
  // its own messages left it; in turns by message, they would evict each other's pictures. A host
  // that does other work between messages finds it colder. Round 0 only makes grids and buffers.
  for (int round = 0; round <= rounds; ++round) {
    for (int turn = 0; turn < ways; ++turn) {
      const int way = (round + turn) % ways;
      for (std::size_t i = 0; i < messages.size(); ++i) {
        const double seconds = SecondsOf([&] { players->Run(way, messages[i], stream.floors[i]); });
        double& least = best[i][static_cast<std::size_t>(way)];
        if (round > 0) least = std::min(least, seconds);
      }
    }
  }
  return best;
}

void PrintStreamTimes(const PreparedStream& stream, const std::vector<Times>& times) {
  std::array<GroupTotal, kGroups> totals = {};
  for (std::size_t i = 0; i < times.size(); ++i) {
    for (const int group : {GroupOf(stream.floors[i]), kAll}) {
      GroupTotal& total = totals[static_cast<std::size_t>(group)];
      ++total.messages;
      total.pixelBytes += static_cast<double>(stream.floors[i].bitmapBytes);
      for (std::size_t c = 0; c < kWays; ++c) total.seconds[c] += times[i][c];
    }
  }
  const FrameHeader& header = stream.floors.front().header;
  std::printf("\n%s, %d x %d, blocks of %d x %d\n", stream.file.name.c_str(), header.imageWidth,
              header.imageHeight, header.blockWidth, header.blockHeight);
  std::printf("  %-5s %5s %10s %10s %10s %8s %8s %8s %9s %9s\n", "group", "count", "drawn ms",
              "undrawn ms", "floor ms", "drawn/", "undrawn/", "drawn/", "frames/s", "MB/s");
  std::printf("  %-5s %5s %10s %10s %10s %8s %8s %8s\n", "", "", "a message", "a message",
              "a message", "floor", "floor", "fl.+conv");
  for (std::size_t group = 0; group < kGroups; ++group) {
    if (totals[group].messages == 0) continue;
    PrintGroup(kGroupNames[group], totals[group], stream.hasReduced);
  }
}

}  // namespace zlibvideo::bench
