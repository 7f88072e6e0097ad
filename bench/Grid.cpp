// Drawing, and messages of few and of many blocks.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "bench/Bench.h"
#include "output/RowWidener.h"
#include "tests/StreamBuilder.h"

namespace zlibvideo::bench {
namespace {

/// A message with a record for every block: all have the same pixels, or all are empty.
Bytes MessageOf(int width, int height, int block, bool changed) {
  const int columns = (width + block - 1) / block;
  const int rows = (height + block - 1) / block;
  const auto blockBytes = static_cast<std::size_t>(block * block * kBlockPixelBytes);
  Record record;
  if (changed) record = {.format = formats::kDirect, .payload = Zlib(Noise(blockBytes, 1))};
  Message message{.header = Header(kCodecTypeVersion2, width, height, block, block)};
  message.records.assign(static_cast<std::size_t>(columns * rows), record);
  return message.Build();
}

void SetBitmapBytes(benchmark::State* state, std::size_t bytes) {
  state->SetBytesProcessed(state->iterations() * static_cast<std::int64_t>(bytes));
}

void Copy(benchmark::State& state, int width, int height) {
  const Bytes picture(static_cast<std::size_t>(width * height * kBitmapPixelBytes), 1);
  Bytes bitmap(picture.size());
  for (auto _ : state) {
    std::memcpy(bitmap.data(), picture.data(), picture.size());
    benchmark::ClobberMemory();
  }
  SetBitmapBytes(&state, bitmap.size());
}

void Compose(benchmark::State& state, int width, int height) {
  const auto block = static_cast<int>(state.range(0));
  Player player;
  player.Decode(MessageOf(width, height, block, true));
  for (auto _ : state) player.PushFrame(&player.Bitmap());
  SetBitmapBytes(&state, player.Bitmap().Pixels().size());
}
BENCHMARK_CAPTURE(Copy, 1280x720, 1280, 720);
BENCHMARK_CAPTURE(Compose, 1280x720, 1280, 720)->Arg(64)->Arg(32)->Arg(16);
BENCHMARK_CAPTURE(Copy, 1920x1080, 1920, 1080);
BENCHMARK_CAPTURE(Compose, 1920x1080, 1920, 1080)->Arg(64);

/// Widens rows of 64 pixels, as many pixels as 1280x720.
void Widen(benchmark::State& state) {
  constexpr int kWidth = 64;
  constexpr int kHeight = 1280 * 720 / kWidth;
  const auto way = static_cast<std::size_t>(state.range(0));
  if (way >= AvailableRowWideners().size()) return state.SkipWithError("not on this processor");
  const NamedRowWidener& widener = AvailableRowWideners()[way];
  state.SetLabel(widener.name);
  const Bytes pixels(std::size_t{kWidth} * kHeight * kBlockPixelBytes, 1);
  StandInBitmap bitmap;
  bitmap.Resize(kWidth, kHeight, kBitmapVideoFrame);
  for (auto _ : state) {
    widener.widen(pixels.data(), BitmapRows(&bitmap, kHeight - 1, 0), kHeight, kWidth);
  }
  SetBitmapBytes(&state, bitmap.Pixels().size());
}
BENCHMARK(Widen)->DenseRange(0, 2);

/// Decodes messages of so many blocks a side, without drawing.
void Grid(benchmark::State& state, bool changed) {
  constexpr int kBlock = FrameHeader::kBlockSizeStep;
  constexpr bool kSkipPush = true;
  const auto side = static_cast<int>(state.range(0));
  // The largest picture has its last column and row cut by a pixel.
  const int size = std::min(side * kBlock, FrameHeader::kMaxImageSize);
  const Bytes message = MessageOf(size, size, kBlock, changed);
  Player player;
  player.Decode(message, kSkipPush);  // makes grid and buffers
  for (auto _ : state) player.Decode(message, kSkipPush);
  state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK_CAPTURE(Grid, nothing changed, false)->RangeMultiplier(4)->Range(1, 256);
BENCHMARK_CAPTURE(Grid, all changed, true)->RangeMultiplier(4)->Range(1, 256);

}  // namespace
}  // namespace zlibvideo::bench
