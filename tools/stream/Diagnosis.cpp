// The decoder says only that it failed. Where is found by exclusion: every whole zlib stream goes
// through `DecompressBlock`, so the last one that was tried either is the culprit or marks how far
// decoding came. After that mark there are only intermediate payloads; they change nothing that
// their own checks look at, so those checks give the same answers now as they did then.

#include "tools/stream/Diagnosis.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "bitstream/InflateStream.h"
#include "bitstream/RowBand.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"
#include "tools/stream/ZlibTrial.h"

namespace zlibvideo {
namespace {

using Record = MessageOutline::Record;

unsigned int PixelRoom(const FrameHeader& header) {
  return static_cast<unsigned int>(RawDataCapacity(header.blockWidth, header.blockHeight));
}

unsigned int ScratchRoom(const FrameHeader& header) {
  return static_cast<unsigned int>(ScratchBufferSize(header.blockWidth, header.blockHeight));
}

std::string DescribeBand(const BlockHeader& header, const BitmapDataBlock& block) {
  const std::string first = std::to_string(header.diffRowStart);
  const std::string last = std::to_string(header.diffRowStart + header.diffRowCount - 1);
  return "the record's band of " +
         (first == last ? "row " + first : "rows " + first + " to " + last) + ", in a block of " +
         std::to_string(block.fHeight) + " rows, ";
}

std::string DescribeBandFault(RowBand::Fault fault, const BlockHeader& header,
                              const BitmapDataBlock& block, unsigned int room) {
  const std::string reference =
      "the block's reference pixels (" + std::to_string(block.fPreviousDataSize) + " bytes)";
  switch (fault) {
    case RowBand::Fault::kPreviousDataTooLong:
      return reference + " do not fit the room of " + std::to_string(room) + " bytes";
    case RowBand::Fault::kStartsBeyondRoom:
      return DescribeBand(header, block) + "starts past the room of " + std::to_string(room) +
             " bytes";
    case RowBand::Fault::kEndsBeyondPrevious:
      return DescribeBand(header, block) + "ends past " + reference;
    case RowBand::Fault::kEndsBeyondRoom:
      return DescribeBand(header, block) + "ends past the room of " + std::to_string(room) +
             " bytes";
    case RowBand::Fault::kPreviousDataTooShort:
      return DescribeBand(header, block) + "leaves rows above it that " + reference +
             " do not hold";
    default:
      return DescribeBand(header, block) + "ends past the block";
  }
}

bool CanPrime(ByteSpan dictionary, unsigned int room) {
  std::vector<unsigned char> output(room);
  InflateStream stream;
  return stream.Open(StreamForm::kRawDeflate) && stream.Prime(dictionary, output.data(), room);
}

/// Why an intermediate payload is refused; nothing when it is not.
std::optional<std::string> WhyRefused(const BitmapDataBlock& block, const BlockRecord& record,
                                      unsigned int room) {
  const BlockHeader& header = record.header;
  if (block.fPreviousData == nullptr) {
    return "the record builds on reference pixels, but no direct record has given the block any";
  }
  if (record.payload.size != 0 && IsPrimed(header.format)) {
    const ByteSpan dictionary = PrimingDictionary(block, header.format);
    if (dictionary.size == 0) return "the record is primed, but the block's dictionary is empty";
    if (!CanPrime(dictionary, room)) {
      return "the record is primed, but zlib refuses the block's dictionary of " +
             std::to_string(dictionary.size) + " bytes";
    }
  }
  RowBand band;
  if (!HasBand(header.format)) return std::nullopt;
  const RowBand::Fault fault = RowBand::Find(block, header, room, &band);
  if (fault == RowBand::Fault::kNone) return std::nullopt;
  return DescribeBandFault(fault, header, block, room);
}

Failure DiagnoseStream(const Record& culprit, const FrameHeader& header) {
  const bool reduced = HasColorField(culprit.record.header.format);
  const ZlibTrial trial =
      ZlibTrial::Run(culprit.record.payload, reduced ? ScratchRoom(header) : PixelRoom(header));
  return {"the record's payload " + (trial.fault.empty() ? "was refused by zlib" : trial.fault),
          culprit.offset, culprit.place};
}

/// The first record from `begin` on that a check refuses.
std::optional<Failure> FindRefused(const InspectingDecoder& decoder, const MessageOutline& outline,
                                   std::vector<Record>::const_iterator begin) {
  if (outline.header->codecType != kCodecTypeVersion2) return std::nullopt;
  const unsigned int room = PixelRoom(*outline.header);
  for (auto entry = begin; entry != outline.records.end(); ++entry) {
    if (entry->record.IsEmpty()) continue;
    // Decoding did not reach the next direct payload.
    if (IsDirect(entry->record.header.format)) break;
    const BitmapDataBlock* block = decoder.FindBlock(entry->place.row, entry->place.column);
    if (block == nullptr) continue;
    if (auto why = WhyRefused(*block, entry->record, room)) {
      return Failure{std::move(*why), entry->offset, entry->place};
    }
  }
  return std::nullopt;
}

}  // namespace

Failure Diagnose(const InspectingDecoder& decoder, ByteSpan message) {
  return Diagnose(decoder, MessageOutline::Read(message));
}

Failure Diagnose(const InspectingDecoder& decoder, const MessageOutline& outline) {
  const bool undecoded = outline.gridWidth == 0 || outline.gridHeight == 0;
  if (undecoded && outline.fault) return *outline.fault;

  const auto last =
      std::find_if(outline.records.begin(), outline.records.end(), [&decoder](const Record& entry) {
        return !entry.record.IsEmpty() && entry.record.payload.data == decoder.LastSource();
      });
  const bool none = last == outline.records.end();  // none was tried, or the palette was the last
  if (!none && !decoder.LastSucceeded()) return DiagnoseStream(*last, *outline.header);
  if (auto refused =
          FindRefused(decoder, outline, none ? outline.records.begin() : std::next(last))) {
    return *std::move(refused);
  }
  if (outline.fault) return *outline.fault;
  return {"the message is well formed, but it was not decoded: possibly out of memory", 0,
          std::nullopt};
}

std::string ExplainFailure(const Failure& failure) {
  std::string where = "byte " + std::to_string(failure.offset);
  if (failure.block) {
    where += ", block row " + std::to_string(failure.block->row) + " column " +
             std::to_string(failure.block->column);
    if (failure.block->pass > 1) where += ", pass " + std::to_string(failure.block->pass);
  }
  return where + ": " + failure.what;
}

}  // namespace zlibvideo
