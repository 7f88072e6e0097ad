#include "tools/record/BlockEncoder.h"

#include <cstring>
#include <limits>
#include <utility>

#include "bitstream/BlockRecord.h"
#include "bitstream/FrameHeader.h"
#include "bitstream/Priming.h"
#include "grid/BlockFormat.h"
#include "grid/BufferSizes.h"
#include "tools/stream/SpanOf.h"

namespace zlibvideo {
namespace {

unsigned int RowBytes(const BitmapDataBlock& block) {
  return static_cast<unsigned int>(block.fWidth * kBlockPixelBytes);
}

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

/// Some rows of a block.
struct Band {
  unsigned int firstRow = 0;
  unsigned int rowCount = 0;
};

/// The fewest rows outside which the pixels are those of the previous data.
Band ChangedRows(const BitmapDataBlock& block, ByteSpan pixels) {
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

BlockPayload Payload(unsigned int format, std::vector<unsigned char> bytes, Band band = {}) {
  return {{static_cast<std::uint8_t>(format), static_cast<std::uint8_t>(band.firstRow),
           static_cast<std::uint8_t>(band.rowCount)},
          std::move(bytes)};
}

}  // namespace

std::size_t BlockPayload::RecordSize(int codecType) const {
  return bytes.size() + (codecType == kCodecTypeVersion2 ? header.Size() : 0);
}

BlockEncoder::BlockEncoder(const RecordOptions& options)
    : fCodecType(options.codecType),
      fRenewPercent(options.renewPercent),
      fZlib(StreamForm::kZlib, options.level),
      fRaw(StreamForm::kRawDeflate, options.level) {}

BlockPayload BlockEncoder::Encode(const BitmapDataBlock& block, ByteSpan pixels,
                                  const Forms& forms) {
  const bool intermediate = forms.intermediate && HasReference(block, pixels);
  if (intermediate && ChangedRows(block, pixels).rowCount == 0) {
    return Payload(kFormatDiffRows, {});  // a band of no rows: the block goes back to its reference
  }
  Smallest smallest;
  TryForms(block, pixels, intermediate, nullptr, &smallest);
  if (forms.colors != nullptr) TryForms(block, pixels, intermediate, forms.colors, &smallest);
  return DirectIsPreferred(smallest) ? *std::move(smallest.direct)
                                     : *std::move(smallest.intermediate);
}

void BlockEncoder::TryForms(const BitmapDataBlock& block, ByteSpan pixels, bool intermediate,
                            const ReducedColors* colors, Smallest* smallest) {
  const unsigned int direct = ColorField(colors);
  const unsigned int primed = direct | kFormatPrimed;
  const std::vector<unsigned char> carried = Carried(pixels, colors);
  KeepSmaller(Payload(direct, fZlib.Compress(SpanOf(carried))), &smallest->direct);
  if (!intermediate) return;
  KeepSmaller(Payload(primed, CompressPrimed(block, primed, carried)), &smallest->intermediate);
  TryBand(block, pixels, colors, smallest);
}

void BlockEncoder::TryBand(const BitmapDataBlock& block, ByteSpan pixels,
                           const ReducedColors* colors, Smallest* smallest) {
  // A band of all rows gains nothing over the forms without one; any other fits its two bytes.
  static_assert(FrameHeader::kMaxBlockSize - 1 <= std::numeric_limits<std::uint8_t>::max());
  const Band band = ChangedRows(block, pixels);
  if (band.rowCount == static_cast<unsigned int>(block.fHeight)) return;

  const unsigned int rowBytes = RowBytes(block);
  const std::vector<unsigned char> carried = Carried(
      {pixels.data + std::size_t{band.firstRow} * rowBytes, band.rowCount * rowBytes}, colors);
  const unsigned int banded = ColorField(colors) | kFormatDiffRows;
  const unsigned int primed = banded | kFormatPrimed;
  KeepSmaller(Payload(banded, fZlib.Compress(SpanOf(carried)), band), &smallest->intermediate);
  KeepSmaller(Payload(primed, CompressPrimed(block, primed, carried), band),
              &smallest->intermediate);
}

std::vector<unsigned char> BlockEncoder::CompressPrimed(const BitmapDataBlock& block,
                                                        unsigned int format,
                                                        const std::vector<unsigned char>& data) {
  return fRaw.Compress(SpanOf(data), PrimingDictionary(block, format));
}

void BlockEncoder::KeepSmaller(BlockPayload candidate,
                               std::optional<BlockPayload>* smallest) const {
  if (!smallest->has_value() ||
      candidate.RecordSize(fCodecType) < (*smallest)->RecordSize(fCodecType)) {
    *smallest = std::move(candidate);
  }
}

bool BlockEncoder::DirectIsPreferred(const Smallest& smallest) const {
  if (!smallest.intermediate.has_value()) return true;
  constexpr std::size_t kPercent = 100;
  const std::size_t direct = smallest.direct->RecordSize(fCodecType);
  const std::size_t intermediate = smallest.intermediate->RecordSize(fCodecType);
  if (direct > BlockRecord::kMaxSize) return direct <= intermediate;
  return direct * kPercent <= intermediate * (kPercent + fRenewPercent);
}

}  // namespace zlibvideo
