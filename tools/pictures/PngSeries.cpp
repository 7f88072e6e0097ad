#include "tools/pictures/PngSeries.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "tools/pictures/PngContainer.h"

namespace zlibvideo {
namespace {

/// Small bands are more often as they were, large ones compress to fewer bytes: with these, a
/// desktop's pictures take 0.2 % more than whole ones.
constexpr std::size_t kBandBytes = 0x30000;

int RowsOfBand(const FrameView& frame) {
  return std::max(1, static_cast<int>(kBandBytes / frame.RowBytes()));
}

/// The band that begins at row `top`, with the row above it.
FrameView ViewOfBand(const FrameView& frame, int top) {
  const int first = std::max(0, top - 1);
  const int end = std::min(frame.height, top + RowsOfBand(frame));
  return {frame.pixels + static_cast<std::size_t>(first) * frame.RowBytes(), frame.width,
          end - first};
}

bool IsSame(const FrameView& a, const FrameView& b) {
  return std::memcmp(a.pixels, b.pixels, a.ByteCount()) == 0;
}

std::shared_ptr<const PixelRows> Copy(const FrameView& view, bool hasRowAbove) {
  PixelRows rows = {
      {view.pixels, view.pixels + view.ByteCount()}, view.width, view.height, hasRowAbove};
  return std::make_shared<const PixelRows>(std::move(rows));
}

}  // namespace

PngSeries::Work PngSeries::Begin(const FrameView& frame) {
  if (!fSize.HasSizeOf(frame)) fRows.clear();
  fSize = {nullptr, frame.width, frame.height};
  Change change;
  change.size = fSize;
  for (int top = 0; top < frame.height; top += RowsOfBand(frame)) {
    const std::size_t index = change.bandCount++;
    if (index >= fRows.size()) fRows.emplace_back();
    const FrameView view = ViewOfBand(frame, top);
    std::shared_ptr<const PixelRows>& rows = fRows[index];
    if (rows != nullptr && IsSame(rows->View(), view)) continue;
    rows = Copy(view, top > 0);
    change.bands.push_back({index, rows, nullptr});
  }
  return [this, change = std::move(change)]() mutable -> Completion {
    Compress(&change);
    return [this, change = std::move(change)](std::vector<unsigned char>* png) {
      Complete(change, png);
    };
  };
}

void PngSeries::Compress(Change* change) {
  if (change->bands.empty()) return;
  PngBandDeflater deflater;
  for (NewBand& band : change->bands) {
    band.band = std::make_shared<const PngBand>(deflater.Compress(*band.rows));
    band.rows = nullptr;
  }
}

void PngSeries::Complete(const Change& change, std::vector<unsigned char>* png) {
  fBands.resize(change.bandCount);
  for (const NewBand& band : change.bands) fBands[band.index] = band.band;
  WritePng(change.size, fBands, png);
}

}  // namespace zlibvideo
