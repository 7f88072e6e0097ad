// The state of a decoder that a message replaces for every block, and the state that it builds on.

#include "bitstream/StandaloneFinder.h"

#include <cstdint>

#include "bitstream/MessageBody.h"
#include "grid/BlockFormat.h"
#include "grid/BlockedCodec.h"

namespace zlibvideo {
namespace {

/// A message taken apart as far as its passes of block records.
struct Outline {
  int codecType = 0;
  std::int64_t blocks = 0;
  std::uint8_t flags = 0;
  bool hasPalette = false;
  /// Each at the first record of its pass. Without a second pass, the second has no bytes.
  ByteCursor passes[2] = {ByteCursor(ByteSpan()), ByteCursor(ByteSpan())};
};

bool HasSameGeometry(const FrameHeader& a, const FrameHeader& b) {
  return a.imageWidth == b.imageWidth && a.imageHeight == b.imageHeight &&
         a.blockWidth == b.blockWidth && a.blockHeight == b.blockHeight;
}

std::int64_t BlockCount(const FrameHeader& header) {
  std::int32_t cut = 0;
  return std::int64_t{BlockedCodec::CalcGridSize(header.imageWidth, header.blockWidth, &cut)} *
         BlockedCodec::CalcGridSize(header.imageHeight, header.blockHeight, &cut);
}

/// State that decoding a record may change.
unsigned int ChangedBy(const BlockRecord& record, int codecType) {
  if (record.IsEmpty()) return kStateNone;
  if (codecType == kCodecTypeVersion1) return kStatePixels;
  if (codecType != kCodecTypeVersion2) return kStateNone;
  if (!IsDirect(record.header.format)) return kStatePixels;
  const unsigned int direct = kStatePixels | kStatePreviousData;
  return HasColorField(record.header.format) ? direct | kStateConvertedData : direct;
}

/// Reads a pass of `blocks` records and adds to `*changed` the state that they may change. False
/// if a record does not lie within the message.
bool ReadPass(std::int64_t blocks, int codecType, ByteCursor* cursor, unsigned int* changed) {
  BlockRecord record;
  for (std::int64_t i = 0; i < blocks; ++i) {
    if (!BlockRecord::Read(cursor, codecType, &record)) return false;
    *changed |= ChangedBy(record, codecType);
  }
  return true;
}

/// Reads all that follows the frame header. False for a message that fails.
bool ReadOutline(const FrameHeader& header, ByteCursor cursor, Outline* outline,
                 unsigned int* changed) {
  outline->codecType = header.codecType;
  outline->blocks = BlockCount(header);
  if (header.codecType == kCodecTypeVersion2) {
    if (!cursor.ReadU8(&outline->flags)) return false;
    ByteSpan palette;
    if ((outline->flags & kFlagPalette) != 0 && !ReadPaletteRecord(&cursor, &palette)) return false;
    outline->hasPalette = palette.size != 0;
    if (outline->hasPalette) *changed |= kStatePalette;
  }
  outline->passes[0] = cursor;
  if (!ReadPass(outline->blocks, outline->codecType, &cursor, changed)) return false;
  if ((outline->flags & kFlagSecondPass) == 0 || cursor.Remaining() == 0) return true;
  outline->passes[1] = cursor;
  return ReadPass(outline->blocks, outline->codecType, &cursor, changed);
}

/// State of a block that a message replaces, record by record.
class BlockState {
 public:
  explicit BlockState(int codecType) : fCodecType(codecType) {}

  void Apply(const BlockRecord& record) {
    if (record.IsEmpty()) return;
    if (fCodecType == kCodecTypeVersion1) {
      fReplaced |= kStatePixels;
    } else if (fCodecType == kCodecTypeVersion2) {
      IsDirect(record.header.format) ? ApplyDirect(record) : ApplyIntermediate(record.header);
    }
  }

  /// State from before that the block's records read or leave as it was.
  unsigned int BuiltOn() const { return fRead | (kStateAll & ~fReplaced); }

 private:
  void ApplyDirect(const BlockRecord& record) {
    const unsigned int color = record.header.format & kFormatColorMask;
    const bool isConverted = color == kFormatColorReduced;
    if (record.payload.size == 0 || (color != 0 && !isConverted)) {
      // The pixels stay, and the buffers, old bytes included, become reference data.
      fRead = kStateAll;
      return;
    }
    fReplaced |= kStatePixels | kStatePreviousData;
    if (isConverted) fReplaced |= kStateConvertedData;
  }

  void ApplyIntermediate(const BlockHeader& header) {
    unsigned int needed = kStatePreviousData;
    if (IsPrimed(header.format) && HasColorField(header.format)) needed |= kStateConvertedData;
    fRead |= needed & ~fReplaced;
  }

  int fCodecType;
  unsigned int fReplaced = kStateNone;
  unsigned int fRead = kStateNone;
};

/// State from before that the message reads or leaves as it was.
unsigned int BuiltOn(const Outline& outline) {
  ByteCursor first = outline.passes[0];
  ByteCursor second = outline.passes[1];
  const bool hasSecond = second.Remaining() != 0;
  unsigned int builtOn = kStateNone;
  BlockRecord record;
  for (std::int64_t i = 0; i < outline.blocks; ++i) {
    BlockState block(outline.codecType);
    // All records were read before.
    static_cast<void>(BlockRecord::Read(&first, outline.codecType, &record));
    block.Apply(record);
    if (hasSecond && BlockRecord::Read(&second, outline.codecType, &record)) block.Apply(record);
    builtOn |= block.BuiltOn();
  }
  return outline.hasPalette ? builtOn & ~kStatePalette : builtOn;
}

}  // namespace

bool StandaloneFinder::Next(const unsigned char* message, unsigned int length) {
  if (length < FrameHeader::kMinMessageSize) return false;
  ByteCursor cursor(message, length);
  FrameHeader header;
  if (!FrameHeader::Read(&cursor, &header) || !header.IsValid()) return false;
  // A grid of new blocks: of the state before, the palette alone is left.
  if (fHeader.IsValid() && !HasSameGeometry(header, fHeader)) fChanged &= kStatePalette;
  fHeader = header;

  const unsigned int before = fChanged;
  Outline outline;
  if (!ReadOutline(header, cursor, &outline, &fChanged)) return false;
  return (before & BuiltOn(outline)) == 0;
}

}  // namespace zlibvideo
