#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "bench/IsolatedBenchmarks.h"
#include "bench/PlainLoops.h"
#include "grid/BlockedCodec.h"
#include "grid/BufferSizes.h"
#include "host/standin/StandInBitmap.h"
#include "output/WidenRow.h"

namespace zlibvideo::bench {
namespace {

struct PictureSize {
  int width;
  int height;
  int block;
};

constexpr PictureSize kPictures[] = {
    {1280, 720, 64},  {1920, 1080, 64},
    {1280, 720, 16},  {1279, 719, 64},  // an odd number of pixels in the last column of blocks
    {4095, 4095, 64}, {4095, 4095, 16},
};

/// A grid full of pixels, a bitmap for it, and a second picture to be copied into that bitmap.
class Scene {
 public:
  explicit Scene(const PictureSize& size) : fSize(size) {
    std::mt19937 random(1);
    if (!fCodec.SetupCodec(size.width, size.height, size.block, size.block)) std::abort();
    std::int32_t rest = 0;
    fColumns = BlockedCodec::CalcGridSize(size.width, size.block, &rest);
    fRows = BlockedCodec::CalcGridSize(size.height, size.block, &rest);
    Bytes pixels(static_cast<std::size_t>(RawDataCapacity(size.block, size.block)));
    for (unsigned char& byte : pixels) byte = static_cast<unsigned char>(random());
    for (int cell = 0; cell < fRows * fColumns; ++cell) {
      BitmapDataBlock* block = fCodec.GetBlock(cell / fColumns, cell % fColumns);
      if (!block->SetRawData(pixels.data(), static_cast<int>(pixels.size()))) std::abort();
    }
    fBitmap.Resize(size.width, size.height, kBitmapVideoFrame);
    fPicture.assign(fBitmap.Pixels().size(), 1);
  }

  std::size_t BitmapBytes() const { return fPicture.size(); }

  void Push() { fCodec.PushFrame(&fBitmap); }
  void Copy() { std::memcpy(fBitmap.GetBMBaseAddr(), fPicture.data(), fPicture.size()); }

  /// `PushFrame` with another way to widen rows.
  void PushWith(RowWidener widen) {
    std::int32_t bottomRow = -1;
    for (std::int32_t row = fRows - 1; row >= 0; --row) {
      bottomRow += fCodec.GetBlock(row, 0)->fHeight;
      for (std::int32_t column = 0; column < fColumns; ++column) {
        const BitmapDataBlock& block = *fCodec.GetBlock(row, column);
        const BitmapRows targets(&fBitmap, bottomRow, column * fSize.block);
        widen(block.fRawData, targets, block.fHeight, block.fWidth);
      }
    }
  }

 private:
  PictureSize fSize;
  int fColumns = 0;
  int fRows = 0;
  BlockedCodec fCodec;
  StandInBitmap fBitmap;
  Bytes fPicture;
};

template <typename Action>
void Register(const std::shared_ptr<Scene>& scene, const std::string& name, Action action) {
  const auto run = [scene, action](benchmark::State& state) {
    for (auto _ : state) {
      action(*scene);
      benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(scene->BitmapBytes()));
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->UseRealTime();
}

}  // namespace

void RegisterComposition() {
  for (const PictureSize& size : kPictures) {
    const auto scene = std::make_shared<Scene>(size);
    const std::string base = "compose/" + std::to_string(size.width) + "x" +
                             std::to_string(size.height) + "_blocks_of_" +
                             std::to_string(size.block) + "/";
    Register(scene, base + "memcpy", [](Scene& s) { s.Copy(); });
    Register(scene, base + "PushFrame", [](Scene& s) { s.Push(); });
    for (const NamedRowWidener& variant : AvailableRowWideners()) {
      Register(scene, base + variant.name,
               [widen = variant.widen](Scene& s) { s.PushWith(widen); });
    }
    Register(scene, base + "byte_loop", [](Scene& s) { s.PushWith(PlainWidenRows); });
  }
}

}  // namespace zlibvideo::bench
