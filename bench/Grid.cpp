#include <benchmark/benchmark.h>
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "bench/IsolatedBenchmarks.h"
#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "grid/Sizes.h"
#include "host/standin/StandInVideoObject.h"
#include "tools/stream/SpanOf.h"

namespace zlibvideo::bench {
namespace {

constexpr int kBlockSize = 16;
/// Blocks a side of square grids of 1 to 65,536.
constexpr int kSides[] = {1, 4, 16, 64, 256};
/// Few and short: large grids take long to fill before the clock starts, and some repetitions go
/// undisturbed.
constexpr int kRepetitions = 7;
constexpr double kMinSeconds = 0.003;

/// The largest picture has its last column and row cut by a pixel.
int ImageSize(int side) {
  return std::min(side * kBlockSize, FrameHeader::kMaxImageSize);
}

Bytes MessageOf(int side, ByteSpan payload) {
  FrameHeader header;
  header.frameType = FrameHeader::kKeyFrameType;
  header.codecType = kCodecTypeVersion2;
  header.imageWidth = header.imageHeight = ImageSize(side);
  header.blockWidth = header.blockHeight = kBlockSize;
  unsigned char headerBytes[FrameHeader::kSize];
  header.Write(headerBytes);

  Bytes message(headerBytes, headerBytes + FrameHeader::kSize);
  message.push_back(0);  // flags
  for (int block = 0; block < side * side; ++block) {
    const unsigned int size = payload.size == 0 ? 0 : payload.size + 1;
    char sizeField[BlockRecord::kSizeFieldBytes];
    BlockedCodec().WriteToBuf2(sizeField, 0, static_cast<std::int32_t>(size));
    message.insert(message.end(), sizeField, sizeField + BlockRecord::kSizeFieldBytes);
    if (size == 0) continue;
    message.push_back(0);  // format: direct, 3-byte pixels
    message.insert(message.end(), payload.data, payload.data + payload.size);
  }
  return message;
}

Bytes CompressedBlock() {
  Bytes pixels(std::size_t{kBlockSize} * kBlockSize * kBlockPixelBytes);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    pixels[i] = static_cast<unsigned char>(i * i >> 6);
  }
  uLongf size = compressBound(static_cast<uLong>(pixels.size()));
  Bytes compressed(size);
  compress(compressed.data(), &size, pixels.data(), static_cast<uLong>(pixels.size()));
  compressed.resize(size);
  return compressed;
}

void SetUpGrid(benchmark::State& state, int side) {
  BlockedCodec codec;
  const int size = ImageSize(side);
  int change = 0;
  const auto setUp = [&] {
    // A picture one pixel smaller needs as many blocks but a new grid.
    change = 1 - change;
    if (!codec.SetupCodec(size - change, size, kBlockSize, kBlockSize)) std::abort();
  };
  setUp();
  for (auto _ : state) setUp();
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * side * side);
}

void Decode(benchmark::State& state, int side, Bytes message, bool skipPush) {
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  StandInVideoObject video;
  const auto decode = [&] {
    if (!decoder.DecompressVideo(video.Ref(), message.data(), message.size(), skipPush))
      std::abort();
    benchmark::ClobberMemory();
  };
  decode();  // makes grid and buffers
  for (auto _ : state) decode();
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * side * side);
}

}  // namespace

void RegisterGrid() {
  const Bytes block = CompressedBlock();
  const ByteSpan payload = SpanOf(block);
  const auto add = [](const std::string& name, int side, auto function, auto... arguments) {
    const std::string path = "grid/" + name + "/" + std::to_string(side * side) + " blocks";
    benchmark::RegisterBenchmark(path.c_str(), function, side, arguments...)
        ->UseRealTime()
        ->Repetitions(kRepetitions)
        ->MinTime(kMinSeconds);
  };
  for (const int side : kSides) add("set up", side, SetUpGrid);
  for (const int side : kSides) add("nothing changed", side, Decode, MessageOf(side, {}), true);
  for (const int side : kSides) add("all changed", side, Decode, MessageOf(side, payload), true);
  for (const int side : kSides) {
    add("all changed and drawn", side, Decode, MessageOf(side, payload), false);
  }
}

}  // namespace zlibvideo::bench
