#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <functional>
#include <limits>

#include "bench/Bench.h"
#include "bitstream/FrameHeader.h"
#include "host/BitmapPixel.h"
#include "host/SRECT.h"

namespace zlibvideo::bench {
namespace {

constexpr int kRounds = 20;
constexpr const char* kWhole = "whole";
constexpr const char* kByChanges = "by changes";

struct Message {
  const Bytes* bytes = nullptr;
  /// Whether it belongs to the group that is measured.
  bool counts = false;
  std::size_t drawnBytes = 0;
  /// Seconds, the least of all rounds: other work on the machine only adds to them.
  double decode = std::numeric_limits<double>::max();
  double zlib = std::numeric_limits<double>::max();
  double copy = std::numeric_limits<double>::max();
};

/// Seconds of a call of `action`.
template <typename Action>
double SecondsOf(Action&& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A calm message changes at most 8 blocks, as when a cursor moves.
const char* GroupOf(const Bytes& message, std::size_t changedBlocks) {
  constexpr std::size_t kMaxCalmBlocks = 8;
  if (message.front() >> 4 == FrameHeader::kKeyFrameType) return "key";
  return changedBlocks > kMaxCalmBlocks ? "busy" : "calm";
}

/// Decodes the stream once. That also makes buffers and reference data, so that all later rounds
/// do the same work.
std::vector<Message> Examine(const Stream& stream, const std::string& group, bool byChanges,
                             Player* player) {
  std::vector<Message> messages;
  for (const Bytes& bytes : stream.messages) {
    player->Decode(bytes, true);
    std::size_t blocks = 0;
    std::size_t pixels = 0;
    for (const BitmapDataBlock* block : player->Blocks()) {
      if (block->fDrawn) continue;
      ++blocks;
      pixels += static_cast<std::size_t>(block->fWidth * block->fHeight);
    }
    player->PushChanges(&player->Bitmap());
    messages.push_back(
        {.bytes = &bytes,
         .counts = group == "all" || group == GroupOf(bytes, blocks),
         .drawnBytes = byChanges ? pixels * kBitmapPixelBytes : player->Bitmap().Pixels().size()});
  }
  return messages;
}

/// Plays the whole stream in each round, first as a host does, then for the floor.
void Decode(benchmark::State& state, const Stream& stream, const std::string& group,
            const std::string& drawing) {
  const bool byChanges = drawing == kByChanges;
  Player player;
  std::vector<Message> messages = Examine(stream, group, byChanges, &player);
  const auto count = static_cast<double>(std::ranges::count(messages, true, &Message::counts));
  if (count == 0) return state.SkipWithError("the stream has no such message");
  const auto decode = [&](const Message& message) {
    player.Decode(*message.bytes, byChanges);
    if (byChanges) player.PushChanges(&player.Bitmap());
  };

  Player floorPlayer;
  floorPlayer.Decode(stream);
  const Bytes picture(player.Bitmap().Pixels().size(), 1);
  const auto copy = [&](const Message& message) {
    std::memcpy(floorPlayer.Bitmap().GetBMBaseAddr(), picture.data(), message.drawnBytes);
    benchmark::ClobberMemory();
  };

  for (auto _ : state) {
    double total = 0;
    for (Message& message : messages) {
      const double seconds = SecondsOf([&] { decode(message); });
      message.decode = std::min(message.decode, seconds);
      if (message.counts) total += seconds;
    }
    for (Message& message : messages) {
      StartZlibClock();
      floorPlayer.Decode(*message.bytes, true);
      message.zlib = std::min(message.zlib, StopZlibClock());
      message.copy = std::min(message.copy, SecondsOf([&] { copy(message); }));
    }
    state.SetIterationTime(total / count);
  }

  double decodeTime = 0;
  double floor = 0;
  for (const Message& message : messages) {
    if (!message.counts) continue;
    decodeTime += message.decode;
    floor += message.zlib + message.copy;
  }
  constexpr double kMilliseconds = 1e3;
  state.counters["messages"] = count;
  state.counters["least_ms"] = decodeTime / count * kMilliseconds;
  state.counters["floor_ms"] = floor / count * kMilliseconds;
  state.counters["to_floor"] = decodeTime / floor;
  state.counters["frames/s"] = count / decodeTime;
}

}  // namespace

void RegisterMessages(const Stream& stream) {
  for (const std::string group : {"key", "busy", "calm", "all"}) {
    for (const std::string drawing : {kWhole, kByChanges}) {
      const std::string name = "Messages/" + stream.name + "/" + group + "/" + drawing;
      benchmark::RegisterBenchmark(name.c_str(), Decode, std::cref(stream), group, drawing)
          ->UseManualTime()
          ->Iterations(kRounds)
          ->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace zlibvideo::bench
