// The decoder says only that it failed. The place is found by exclusion. Every direct payload goes
// through `DecompressBlock`, so the last call either failed or shows how far decoding came. After
// it there are only intermediate payloads. They change nothing that their own checks look at, so
// that the checks give the same answers now.

#include "tools/stream/Diagnosis.h"

#include <algorithm>

#include "bitstream/FrameHeader.h"
#include "bitstream/InflateStream.h"
#include "bitstream/RowBand.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"

namespace zlibvideo {
namespace {

using Record = MessageOutline::Record;

/// Why an intermediate payload is refused, or nothing.
std::string WhyRefused(const BitmapDataBlock& block, const BlockRecord& record, unsigned int room) {
  const unsigned int format = record.header.format;
  if (block.fPreviousData == nullptr) return "it has no reference data";
  if (IsPrimed(format) && record.payload.size != 0 && PrimingDictionary(block, format).size == 0) {
    return "its dictionary is empty";
  }
  RowBand band;
  if (HasBand(format) && !RowBand::Find(block, record.header, room, &band)) {
    return "its band does not fit the reference data";
  }
  return {};
}

}  // namespace

Failure Diagnose(const InspectingDecoder& decoder, const MessageOutline& outline) {
  const bool hasGrid = outline.gridWidth != 0 && outline.gridHeight != 0;
  if (!hasGrid && outline.fault) return *outline.fault;

  const InspectingDecoder::Call& call = decoder.LastCall();
  auto entry = std::find_if(outline.records.begin(), outline.records.end(), [&](const Record& it) {
    return !it.record.IsEmpty() && it.record.payload.data == call.source;
  });
  if (entry == outline.records.end()) {
    entry = outline.records.begin();  // There was no call, or the last was that of the palette.
  } else if (!call.succeeded) {
    return {"its zlib stream is damaged or too long", entry->offset, entry->place};
  } else {
    ++entry;
  }

  const FrameHeader& header = *outline.header;
  const auto room =
      static_cast<unsigned int>(RawDataCapacity(header.blockWidth, header.blockHeight));
  for (; entry != outline.records.end(); ++entry) {
    if (entry->record.IsEmpty()) continue;
    // Decoding did not reach the next direct payload.
    if (IsDirect(entry->record.header.format)) break;
    const BitmapDataBlock* block = decoder.FindBlock(entry->place.row, entry->place.column);
    if (block == nullptr) continue;
    const std::string why = WhyRefused(*block, entry->record, room);
    if (!why.empty()) return {why, entry->offset, entry->place};
  }
  if (outline.fault) return *outline.fault;
  return {"out of memory", 0, std::nullopt};
}

std::string ExplainFailure(const Failure& failure) {
  if (!failure.block) return failure.what;
  const std::string pass =
      failure.block->pass > 1 ? " in pass " + std::to_string(failure.block->pass) : "";
  return "block " + std::to_string(failure.block->row) + "," +
         std::to_string(failure.block->column) + pass + ": " + failure.what;
}

}  // namespace zlibvideo
