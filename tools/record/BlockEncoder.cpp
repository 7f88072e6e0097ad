#include "tools/record/BlockEncoder.h"

#include <cstring>
#include <limits>
#include <utility>

#include "bitstream/FrameHeader.h"
#include "bitstream/InflateStream.h"
#include "bitstream/MessageBody.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"
#include "tools/record/Deflate.h"
#include "tools/stream/SpanOf.h"

namespace zlibvideo {
namespace {

bool HasReference(const BitmapDataBlock& block, ByteSpan pixels) {
  return block.fPreviousData != nullptr &&
         static_cast<unsigned int>(block.fPreviousDataSize) == pixels.size;
}

unsigned int ColorField(const ReducedColors* colors) {
  return colors == nullptr ? 0 : kFormatColorReduced;
}

/// Block pixels as the payload of this colour field decompresses.
std::vector<unsigned char> Carried(ByteSpan pixels, const ReducedColors* colors) {
  if (colors != nullptr) return colors->Encode(pixels);
  return {pixels.data, pixels.data + pixels.size};
}

}  // namespace

/// Some rows of a block.
struct BlockEncoder::Band {
  unsigned int firstRow = 0;
  unsigned int rowCount = 0;
};

unsigned int RowBytes(const BitmapDataBlock& block) {
  return static_cast<unsigned int>(block.fWidth * kBlockPixelBytes);
}

std::size_t BlockPayload::RecordSize(int codecType) const {
  return bytes.size() + (codecType == kCodecTypeVersion2 ? header.Size() : 0);
}

BlockPayload BlockEncoder::Encode(const BitmapDataBlock& block, ByteSpan pixels,
                                  const Forms& forms) const {
  if (!forms.intermediate || !HasReference(block, pixels)) return Direct(pixels, forms.colors);
  const Band band = ChangedRows(block, pixels);
  // A band of no rows: the block goes back to its reference.
  if (band.rowCount == 0) return {{kFormatDiffRows, 0, 0}, {}};

  BlockPayload primed = Primed(block, pixels, band, nullptr);
  if (forms.colors != nullptr) {
    BlockPayload reduced = Primed(block, pixels, band, forms.colors);
    if (reduced.RecordSize(fCodecType) < primed.RecordSize(fCodecType)) primed = std::move(reduced);
  }
  BlockPayload direct = Direct(pixels, forms.colors);
  if (IsPreferred(direct, primed)) return direct;
  return primed;
}

/// The fewest rows outside which the pixels are those of the previous data.
BlockEncoder::Band BlockEncoder::ChangedRows(const BitmapDataBlock& block, ByteSpan pixels) {
  const unsigned int rowBytes = RowBytes(block);
  const auto changed = [&](unsigned int row) {
    const std::size_t offset = std::size_t{row} * rowBytes;
    return std::memcmp(pixels.data + offset, block.fPreviousData + offset, rowBytes) != 0;
  };
  unsigned int begin = 0;
  auto end = static_cast<unsigned int>(block.fHeight);
  while (begin < end && !changed(begin)) ++begin;
  while (end > begin && !changed(end - 1)) --end;
  return {begin, end - begin};
}

BlockPayload BlockEncoder::Direct(ByteSpan pixels, const ReducedColors* colors) const {
  const std::vector<unsigned char> carried = Carried(pixels, colors);
  return {{static_cast<std::uint8_t>(ColorField(colors)), 0, 0},
          Deflate(StreamForm::kZlib, fLevel, SpanOf(carried))};
}

BlockPayload BlockEncoder::Primed(const BitmapDataBlock& block, ByteSpan pixels, Band band,
                                  const ReducedColors* colors) const {
  const unsigned int rowBytes = RowBytes(block);
  const std::vector<unsigned char> carried = Carried(
      {pixels.data + std::size_t{band.firstRow} * rowBytes, band.rowCount * rowBytes}, colors);
  // A band of all rows gains nothing over the form without one. Any other fits its two bytes.
  static_assert(FrameHeader::kMaxBlockSize - 1 <= std::numeric_limits<std::uint8_t>::max());
  const bool isWhole = band.rowCount == static_cast<unsigned int>(block.fHeight);
  const unsigned int format = ColorField(colors) | kFormatPrimed | (isWhole ? 0 : kFormatDiffRows);
  return {
      {static_cast<std::uint8_t>(format), static_cast<std::uint8_t>(band.firstRow),
       static_cast<std::uint8_t>(band.rowCount)},
      Deflate(StreamForm::kRawDeflate, fLevel, SpanOf(carried), PrimingDictionary(block, format))};
}

bool BlockEncoder::IsPreferred(const BlockPayload& direct, const BlockPayload& intermediate) const {
  constexpr std::size_t kPercent = 100;
  const std::size_t directSize = direct.RecordSize(fCodecType);
  const std::size_t intermediateSize = intermediate.RecordSize(fCodecType);
  if (directSize > BlockRecord::kMaxSize) return directSize <= intermediateSize;
  return directSize * kPercent <= intermediateSize * (kPercent + fRenewPercent);
}

}  // namespace zlibvideo
