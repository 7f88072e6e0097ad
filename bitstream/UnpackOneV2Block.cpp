// The two ways a version-2 payload becomes the pixels of its block: direct, a complete zlib stream
// that also becomes the block's reference data, and intermediate, decoded against that reference.

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "bitstream/InflateStream.h"
#include "bitstream/MessageBody.h"
#include "bitstream/RowBand.h"
#include "grid/BlockFormat.h"
#include "grid/BlockedCodec.h"

using zlibvideo::BlockHeader;
using zlibvideo::ByteSpan;
using zlibvideo::InflateStream;
using zlibvideo::RowBand;

namespace {

bool OpenForPayload(const BitmapDataBlock& block, InflateStream* stream, unsigned char* destination,
                    unsigned int room) {
  if (!zlibvideo::IsPrimed(block.fFormat)) return stream->Open(zlibvideo::StreamForm::kZlib);
  const ByteSpan dictionary = zlibvideo::PrimingDictionary(block, block.fFormat);
  return stream->Open(zlibvideo::StreamForm::kRawDeflate) &&
         stream->Prime(dictionary, destination, room);
}

/// The band that the block's header announces, or an empty band.
bool FindBand(const BitmapDataBlock& block, unsigned int room, RowBand* band) {
  if (!zlibvideo::HasBand(block.fFormat)) return true;
  const BlockHeader header = {block.fFormat, block.fDiffRowStart, block.fDiffRowCount};
  return RowBand::Find(block, header, room, band);
}

/// Whether a payload that accounts for `produced` bytes of the block, out of a room of `room`, gave
/// it all its pixels. An intermediate payload builds on reference data, so it does not count. An
/// empty payload has no pixels. A stream of codes that no conversion accepts accounts for the whole
/// room and produces no pixels.
bool FillsBlock(const BitmapDataBlock& block, unsigned int payloadLength, unsigned int produced,
                unsigned int room) {
  if (!zlibvideo::IsDirect(block.fFormat) || payloadLength == 0) return false;
  if (produced < block.PixelBytes()) return false;
  return !zlibvideo::HasColorField(block.fFormat) || produced < room;
}

/// Copies all rows before the band, and the rows from byte `from` of the block on, from the
/// previous data.
void CopyRowsAroundBand(const BitmapDataBlock& block, const RowBand& band, unsigned int from,
                        unsigned char* destination) {
  std::memcpy(destination, block.fPreviousData, band.offset);
  const unsigned int end = band.End() + band.after;
  if (from < end) std::memcpy(destination + from, block.fPreviousData + from, end - from);
}

/// Inflates a colour-reduced stream and returns its size in bytes. An error of the payload is no
/// error of the block: the bytes produced are converted. Without a scratch buffer, zlib refuses the
/// call and produces nothing.
unsigned int InflateCodes(InflateStream* stream, ByteSpan payload, unsigned char* scratch,
                          unsigned int room) {
  const unsigned int before = stream->TotalOutput();
  static_cast<void>(stream->Inflate(payload, scratch, room, Z_FINISH));
  return stream->TotalOutput() - before;
}

/// Inflates 3-byte pixels and returns the number of bytes at `output` that are this payload's. If
/// zlib refuses the payload as damaged, or for want of a preset dictionary, blackens the whole room
/// and returns it: the block must not show the dictionary or the pixels of an earlier message. A
/// payload that is merely cut off blackens nothing. Behind the returned bytes the room holds
/// anything: a zlib that copies by vectors writes beyond its output.
unsigned int InflatePixels(InflateStream* stream, ByteSpan payload, unsigned char* output,
                           unsigned int room) {
  const unsigned int before = stream->TotalOutput();
  const int result = stream->Inflate(payload, output, room, Z_SYNC_FLUSH);
  if (result != Z_NEED_DICT && result >= 0) return stream->TotalOutput() - before;
  std::memset(output, 0, room);
  return room;
}

}  // namespace

bool BlockedCodec::UnpackOneV2Block(BitmapDataBlock* block, char /*unused1*/,
                                    unsigned char* payload, unsigned int payloadLength,
                                    unsigned char* /*unused2*/, unsigned int* length) {
  block->fDrawn = false;
  unsigned int produced = *length;
  const bool direct = zlibvideo::IsDirect(block->fFormat);
  const bool decoded = direct ? DecompressDirectBlock(block, payload, payloadLength, &produced)
                              : DecompressIntermediateBlock(block->fRawData, &produced, payload,
                                                            payloadLength, block);
  if (!decoded) return false;
  if (produced == 0) return true;
  block->fRawDataSize = static_cast<std::int32_t>(produced);
  block->fProcessed = true;
  if (FillsBlock(*block, payloadLength, produced, *length)) block->fFilled = true;
  *length = produced;
  return true;
}

bool BlockedCodec::DecompressDirectBlock(BitmapDataBlock* block, const unsigned char* payload,
                                         unsigned int payloadLength, unsigned int* length) {
  if (zlibvideo::HasColorField(block->fFormat)) {
    auto size = static_cast<unsigned int>(fScratchColorBufferSize);
    if (fScratchColorBuffer == nullptr ||
        !DecompressBlock(fScratchColorBuffer, &size, payload, payloadLength)) {
      return false;
    }
    // Without memory for the copy, later payloads are primed as without converted data. The pixels
    // of this payload are right.
    static_cast<void>(
        block->SetConvertedData(fScratchColorBuffer, static_cast<std::int32_t>(size)));
    ConvertImageColorToQuarn24(block->fRawData, length, fScratchColorBuffer, size, block->fFormat);
  } else if (!DecompressBlock(block->fRawData, length, payload, payloadLength)) {
    return false;
  }
  return *length == 0 ||
         block->SetPreviousData(block->fRawData, static_cast<std::int32_t>(*length));
}

bool BlockedCodec::DecompressIntermediateBlock(unsigned char* destination,
                                               unsigned int* destinationLength,
                                               const unsigned char* payload,
                                               unsigned int payloadLength, BitmapDataBlock* block) {
  if (block->fPreviousData == nullptr) return false;

  const unsigned int wholeRoom = *destinationLength;
  InflateStream stream;
  if (payloadLength != 0 && !OpenForPayload(*block, &stream, destination, wholeRoom)) return false;
  const unsigned int primed = stream.TotalOutput();

  RowBand band;
  if (!FindBand(*block, wholeRoom, &band)) return false;
  if (zlibvideo::HasBand(block->fFormat) && band.IsEmpty()) {
    // The payload has no rows to fill and is ignored.
    *destinationLength = static_cast<unsigned int>(block->fPreviousDataSize);
    std::memcpy(destination, block->fPreviousData, *destinationLength);
    return stream.Close();
  }
  if (payloadLength == 0) {
    CopyRowsAroundBand(*block, band, band.End(), destination);
    return true;
  }

  const unsigned int around = band.offset + band.after;
  const unsigned int room = wholeRoom > around ? wholeRoom - around : 0;
  unsigned char* output = destination + band.offset;
  if (zlibvideo::HasColorField(block->fFormat)) {
    CopyRowsAroundBand(*block, band, band.End(), destination);
    const unsigned int size = InflateCodes(&stream, {payload, payloadLength}, fScratchColorBuffer,
                                           static_cast<unsigned int>(fScratchColorBufferSize));
    unsigned int converted = room;
    ConvertImageColorToQuarn24(output, &converted, fScratchColorBuffer, size, block->fFormat);
    *destinationLength = around + converted;
  } else {
    const unsigned int given = InflatePixels(&stream, {payload, payloadLength}, output, room);
    // Only now: zlib may have written to these rows behind its output.
    CopyRowsAroundBand(*block, band, std::max(band.End(), band.offset + given), destination);
    *destinationLength = around + (stream.TotalOutput() - primed);
  }
  return stream.Close();
}
