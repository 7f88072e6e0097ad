#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "bench/Contest.h"
#include "bench/IsolatedBenchmarks.h"
#include "bench/PlainLoops.h"
#include "grid/BlockedCodec.h"
#include "grid/Sizes.h"
#include "host/standin/StandInBitmap.h"
#include "output/RowWidener.h"

namespace zlibvideo::bench {
namespace {

struct PictureSize {
  int width;
  int height;
  int block;
  int bytesIntoLine = 0;  // where in a cache line the bitmap begins
};

// Pictures of 1279 x 719 leave an odd number of pixels in the last column of blocks.
constexpr PictureSize kPictures[] = {
    {1280, 720, 64}, {1280, 720, 64, 16}, {1920, 1080, 64}, {1920, 1080, 64, 16}, {1280, 720, 32},
    {1280, 720, 16}, {1279, 719, 64},     {4095, 4095, 64}, {4095, 4095, 16},
};

/// A bitmap that may begin anywhere in a cache line, as those of some hosts do.
class ShiftedBitmap : public StandInBitmap {
 public:
  /// One row more than the picture has leaves room for the shift.
  void Fit(const PictureSize& size) {
    Resize(size.width, size.height + 1, kBitmapVideoFrame);
    SetSurface(kBitmapVideoFrame, GetBMBaseAddr() + size.bytesIntoLine, GetRowLength(), size.width,
               size.height);
  }
};

std::string NameOf(const PictureSize& size) {
  std::string name = "compose/" + std::to_string(size.width) + "x" + std::to_string(size.height) +
                     ", blocks of " + std::to_string(size.block);
  if (size.bytesIntoLine != 0) {
    name += ", bitmap " + std::to_string(size.bytesIntoLine) + " bytes into a cache line";
  }
  return name;
}

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
    fBitmap.Fit(size);
    fPicture.Resize(size.width, size.height, kBitmapVideoFrame);
  }

  void Push() { fCodec.PushFrame(&fBitmap); }
  void Copy() {
    const std::span<const unsigned char> pixels = fPicture.Pixels();
    std::memcpy(fBitmap.GetBMBaseAddr(), pixels.data(), pixels.size());
  }

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
  ShiftedBitmap fBitmap;
  StandInBitmap fPicture;
};

/// A scene that is made when it is first used, since a filter may leave it out: the largest takes
/// 150 MB.
class LateScene {
 public:
  explicit LateScene(const PictureSize& size) : fSize(size) {}

  Scene* operator->() {
    if (fScene == nullptr) fScene = std::make_unique<Scene>(fSize);
    return fScene.get();
  }

 private:
  PictureSize fSize;
  std::unique_ptr<Scene> fScene;
};

}  // namespace

void RegisterComposition() {
  for (const PictureSize& size : kPictures) {
    const auto scene = std::make_shared<LateScene>(size);
    std::vector<Contender> contenders = {{"memcpy", [scene] { (*scene)->Copy(); }},
                                         {"PushFrame", [scene] { (*scene)->Push(); }}};
    for (const NamedRowWidener& variant : AvailableRowWideners()) {
      contenders.push_back(
          {variant.name, [scene, widen = variant.widen] { (*scene)->PushWith(widen); }});
    }
    contenders.push_back({"byte loop", [scene] { (*scene)->PushWith(PlainWidenRows); }});
    const double bytes = double{kBitmapPixelBytes} * size.width * size.height;
    RegisterContest(NameOf(size), {bytes, true}, std::move(contenders));
  }
}

}  // namespace zlibvideo::bench
