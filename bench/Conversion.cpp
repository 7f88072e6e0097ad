// Conversion of colour-reduced pixels, by the component and by a plain loop.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>

#include "bench/Bench.h"
#include "bench/PlainConvert.h"
#include "bitstream/FrameHeader.h"
#include "grid/BlockFormat.h"

namespace zlibvideo::bench {
namespace {

/// Converts blocks of codes by the component, or by the plain loop if the argument is 1.
void Convert(benchmark::State& state, std::vector<Bytes> codes) {
  BlockedCodec codec;
  constexpr std::size_t kMaxBlockSize = FrameHeader::kMaxBlockSize;
  Bytes pixels(kMaxBlockSize * kMaxBlockSize * kBlockPixelBytes);
  const bool plainly = state.range(0) != 0;
  state.SetLabel(plainly ? "plain loop" : "component");
  std::int64_t bytes = 0;
  for (auto _ : state) {
    for (Bytes& block : codes) {
      const auto length = static_cast<unsigned int>(block.size());
      auto size = static_cast<unsigned int>(pixels.size());
      if (plainly) {
        size = PlainConvert(block.data(), length, pixels.data(), size,
                            BlockedCodec::fDefaultTarvishPalette, PlainColorTable());
      } else {
        codec.ConvertImageColorToQuarn24(pixels.data(), &size, block.data(), length,
                                         kFormatColorReduced);
      }
      bytes += size;
    }
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(bytes);
}

/// Converts random codes, of which the first is an index. After an index, a 2-byte code follows
/// with the chance `toColor`. After a 2-byte code, an index follows with the chance `toIndex`.
void ConvertRandom(benchmark::State& state, double toColor, double toIndex) {
  constexpr int kBlocks = 64;  // so many that no branch predictor learns them by heart
  constexpr int kBlockPixels = 64 * 64;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> chance(0, 1);
  std::vector<Bytes> codes(kBlocks);
  for (Bytes& block : codes) {
    bool index = true;
    for (int pixel = 0; pixel < kBlockPixels; ++pixel) {
      block.push_back(static_cast<unsigned char>(index ? random() & 0x7F : random() | 0x80));
      if (!index) block.push_back(static_cast<unsigned char>(random()));
      if (chance(random) < (index ? toColor : toIndex)) index = !index;
    }
  }
  Convert(state, std::move(codes));
}
BENCHMARK_CAPTURE(ConvertRandom, indices, 0, 0)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(ConvertRandom, 10 % colours, 0.1, 0.9)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(ConvertRandom, runs of 8, 0.125, 0.125)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(ConvertRandom, any codes, 0.5, 0.5)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(ConvertRandom, in turns, 1, 1)->Arg(0)->Arg(1);

}  // namespace

void RegisterConversion(const Stream& stream) {
  Player player;
  player.Decode(stream);
  std::vector<Bytes> codes;
  for (const BitmapDataBlock* block : player.Blocks()) {
    if (block->fConvertedDataSize == 0) continue;
    codes.emplace_back(block->fConvertedData, block->fConvertedData + block->fConvertedDataSize);
  }
  if (codes.empty()) return;
  benchmark::RegisterBenchmark(("Convert/" + stream.name).c_str(), Convert, codes)->Arg(0)->Arg(1);
}

}  // namespace zlibvideo::bench
