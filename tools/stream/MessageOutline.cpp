#include "tools/stream/MessageOutline.h"

#include <string>

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "grid/BlockedCodec.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr unsigned int kFlagsOffset = FrameHeader::kSize;

/// Reads one message into an outline; every step returns false after noting a fault.
class OutlineReader {
 public:
  OutlineReader(ByteSpan message, MessageOutline* outline)
      : fSize(message.size), fCursor(message), fOutline(outline) {}

  bool Read() {
    if (!ReadHeader()) return false;
    if (fOutline->header->codecType == kCodecTypeVersion2 && !ReadVersion2Opening()) return false;
    if (!ReadPass()) return false;
    if ((fOutline->flags & kFlagSecondPass) != 0 && fCursor.Remaining() != 0 && !ReadPass()) {
      return false;
    }
    fOutline->unread = fCursor.Remaining();
    return true;
  }

 private:
  unsigned int Offset() const { return fSize - fCursor.Remaining(); }

  bool Fail(std::string what, unsigned int offset) {
    fOutline->fault = Failure{std::move(what), offset, std::nullopt};
    return false;
  }

  bool ReadHeader() {
    FrameHeader header;
    if (FrameHeader::Read(&fCursor, &header)) fOutline->header = header;
    if (fSize < FrameHeader::kMinMessageSize) {
      return Fail("the message has " + Counted(fSize, "byte") + ", the shortest possible one has " +
                      std::to_string(FrameHeader::kMinMessageSize),
                  fSize);
    }
    if (header.frameType == FrameHeader::kInvalidFrameType) return Fail("the frame type is 0", 0);
    if (header.imageWidth == 0) return Fail("the picture is 0 pixels wide", 1);
    if (header.imageHeight == 0) return Fail("the picture is 0 pixels high", 3);

    std::int32_t cut = 0;
    fOutline->gridWidth = BlockedCodec::CalcGridSize(header.imageWidth, header.blockWidth, &cut);
    fOutline->gridHeight = BlockedCodec::CalcGridSize(header.imageHeight, header.blockHeight, &cut);
    return true;
  }

  bool ReadVersion2Opening() {
    if (!fCursor.ReadU8(&fOutline->flags)) {
      return Fail("the message ends where its flags byte belongs", kFlagsOffset);
    }
    if ((fOutline->flags & kFlagPalette) == 0) return true;

    const unsigned int offset = Offset();
    std::uint16_t size = 0;
    ByteCursor sizeField = fCursor;
    if (!sizeField.ReadU16(&size) || !ReadPaletteRecord(&fCursor, &fOutline->palette)) {
      return Fail("a palette is announced, but the message ends before its size", offset);
    }
    fOutline->paletteSize = size;
    return true;
  }

  bool ReadPass() {
    ++fOutline->passes;
    for (int row = 0; row < fOutline->gridHeight; ++row) {
      for (int column = 0; column < fOutline->gridWidth; ++column) {
        if (!ReadRecord({fOutline->passes, row, column})) return false;
      }
    }
    return true;
  }

  bool ReadRecord(BlockPlace place) {
    const ByteCursor start = fCursor;
    MessageOutline::Record entry{{}, place, Offset()};
    if (!BlockRecord::Read(&fCursor, fOutline->header->codecType, &entry.record)) {
      fOutline->fault =
          Failure{WhyUnreadable(start, entry.record) + PaletteRemark(), entry.offset, place};
      return false;
    }
    fOutline->records.push_back(entry);
    return true;
  }

  static std::string WhyUnreadable(ByteCursor start, const BlockRecord& record) {
    if (!record.IsEmpty()) {
      return "the record has " + Counted(record.size, "byte") +
             ", too few for its format byte and the band that it announces";
    }
    std::uint16_t size = 0;
    if (!start.ReadU16(&size)) return "the message ends where a record belongs";
    return "the record announces " + Counted(size, "byte") + ", but the message has only " +
           std::to_string(start.Remaining()) + " more";
  }

  /// A palette that does not fit is silently skipped by the decoder, and what goes wrong
  /// then shows up in the records.
  std::string PaletteRemark() const {
    if (fOutline->paletteSize.value_or(0) == fOutline->palette.size) return {};
    return " (the palette record before it announces " + Counted(*fOutline->paletteSize, "byte") +
           ", which do not fit either, so that its bytes count as records)";
  }

  const unsigned int fSize;
  ByteCursor fCursor;
  MessageOutline* const fOutline;
};

}  // namespace

MessageOutline MessageOutline::Read(ByteSpan message) {
  MessageOutline outline;
  // A false result is in `fault`.
  static_cast<void>(OutlineReader(message, &outline).Read());
  return outline;
}

}  // namespace zlibvideo
