#include "bench/StreamTimes.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <span>
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

/// Files of other formats have their turn in one round of several, since they take long.
constexpr int kRoundsForStills = 4;

enum Group { kKey, kBusy, kCalm, kAll, kGroups };
constexpr const char* kGroupNames[kGroups] = {"key", "busy", "calm", "all"};

Group GroupOf(const MessageFloor& floor) {
  if (floor.header.IsKeyFrame()) return kKey;
  return floor.calls.size() > kMaxCalmPayloads ? kBusy : kCalm;
}

class Player {
 public:
  const StandInBitmap& Bitmap() { return fVideo.Bitmap(); }

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

/// Decodes the files of one format.
class StillPlayer {
 public:
  void Decode(const StillFormat& format, const Bytes& file, const MessageFloor& floor) {
    fPixels.resize(floor.bitmapBytes);
    format.decode(file, floor.header.imageWidth, &fPixels);
  }
  const Bytes& Pixels() const { return fPixels; }

 private:
  Bytes fPixels;
};

/// All ways, each with buffers of its own, so that none finds the cache warmed by another.
struct Players {
  Player drawn;
  Player notDrawn;
  FloorRunner floor;
  FloorRunner floorAndConversion;
  std::array<StillPlayer, StillFormat::kCount> stills;

  void Run(Way way, const PreparedStream& stream, std::size_t message) {
    switch (way) {
      case kDrawn:
        return drawn.Decode(stream.file.messages[message], false);
      case kNotDrawn:
        return notDrawn.Decode(stream.file.messages[message], true);
      case kFloor:
        return floor.Run(stream.floors[message], false);
      case kFloorAndConversion:
        return floorAndConversion.Run(stream.floors[message], true);
      default: {
        const auto format = static_cast<std::size_t>(way - kFirstStill);
        return stills.at(format).Decode(StillFormat::All()[format], stream.stills[format][message],
                                        stream.floors[message]);
      }
    }
  }
};

Way StillWay(std::size_t format) {
  return static_cast<Way>(kFirstStill + static_cast<int>(format));
}

std::vector<Way> WaysOf(const PreparedStream& stream) {
  std::vector<Way> ways = {kDrawn, kNotDrawn, kFloor};
  if (stream.hasReduced) ways.push_back(kFloorAndConversion);
  for (std::size_t format = 0; format < stream.stills.size(); ++format) {
    ways.push_back(StillWay(format));
  }
  return ways;
}

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

void PrintLine(const TimedStream& timed, Way way, const char* what,
               const std::vector<Bytes>& files) {
  const auto count = static_cast<double>(timed.times.size());
  double seconds = 0;
  double bytes = 0;
  for (const Times& message : timed.times) seconds += message[way];
  for (const Bytes& file : files) bytes += static_cast<double>(file.size());
  std::printf("  %-20s %-18s %12.3f %12.0f %16.0f\n", timed.stream->file.name.c_str(), what,
              seconds * kMilliseconds / count, count / seconds, bytes / count);
}

void PrintLines(const TimedStream& timed) {
  const PreparedStream& stream = *timed.stream;
  PrintLine(timed, kDrawn, "zlibvideo", stream.file.messages);
  PrintLine(timed, kFloor, "floor", stream.file.messages);
  if (stream.hasReduced) {
    PrintLine(timed, kFloorAndConversion, "floor+conversion", stream.file.messages);
  }
  for (std::size_t format = 0; format < stream.stills.size(); ++format) {
    PrintLine(timed, StillWay(format), StillFormat::All()[format].name.c_str(),
              stream.stills[format]);
  }
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
    throw std::runtime_error(path + ": message " + std::to_string(floors.size() + 1) + " " +
                             error.what());
  }
  for (const MessageFloor& floor : floors) {
    hasReduced = hasReduced || std::any_of(floor.calls.begin(), floor.calls.end(),
                                           [](const ZlibCall& call) { return call.reduced; });
  }
}

void PreparedStream::EncodeStills() {
  const auto& formats = StillFormat::All();
  stills.assign(formats.size(), {});
  Player player;
  StillPlayer stillPlayer;
  // Here too, the second round is the first like all others.
  for (const Bytes& message : file.messages) player.Decode(message, false);
  for (std::size_t i = 0; i < file.messages.size(); ++i) {
    player.Decode(file.messages[i], false);
    const std::span<const unsigned char> pixels = player.Bitmap().Pixels();
    for (std::size_t format = 0; format < formats.size(); ++format) {
      stills[format].push_back(formats[format].encode(player.Bitmap()));
      stillPlayer.Decode(formats[format], stills[format].back(), floors[i]);
      if (!std::ranges::equal(stillPlayer.Pixels(), pixels)) {
        throw std::runtime_error(file.name + ": message " + std::to_string(i + 1) +
                                 " gives another picture as " + formats[format].name);
      }
    }
  }
}

std::vector<Times> TimeStream(const PreparedStream& stream) {
  const std::size_t messages = stream.file.messages.size();
  const int rounds = std::max(kMinRounds, kDecodings / static_cast<int>(messages));
  const auto players = std::make_unique<Players>();
  const std::vector<Way> ways = WaysOf(stream);
  Times none = {};
  for (const Way way : ways) none[way] = std::numeric_limits<double>::max();
  std::vector<Times> best(messages, none);
  // Each way goes through the whole stream before the next does, so that each finds the cache as
  // its own messages left it; in turns by message, they would evict each other's pictures. A host
  // that does other work between messages finds it colder. Round 0 only makes grids and buffers.
  for (int round = 0; round <= rounds; ++round) {
    for (std::size_t turn = 0; turn < ways.size(); ++turn) {
      const Way way = ways[(static_cast<std::size_t>(round) + turn) % ways.size()];
      if (way >= kFirstStill && round % kRoundsForStills != 0) continue;
      for (std::size_t i = 0; i < messages; ++i) {
        const double seconds = SecondsOf([&] { players->Run(way, stream, i); });
        if (round > 0) best[i][way] = std::min(best[i][way], seconds);
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

void PrintSummary(const std::vector<TimedStream>& streams) {
  if (streams.empty()) return;
  std::printf("\nsummary, zlib %s\n", zlibVersion());
  std::printf("  %-20s %-18s %12s %12s %16s\n", "stream", "what", "ms a picture", "pictures/s",
              "bytes a picture");
  bool hasStills = false;
  for (const TimedStream& timed : streams) {
    PrintLines(timed);
    hasStills = hasStills || !timed.stream->stills.empty();
  }
  if (!hasStills) return;
  for (const StillFormat& format : StillFormat::All()) {
    std::printf("%s: %s\n", format.name.c_str(), format.settings.c_str());
  }
}

}  // namespace zlibvideo::bench
