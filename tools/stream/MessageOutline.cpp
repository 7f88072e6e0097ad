#include "tools/stream/MessageOutline.h"

#include <string>
#include <utility>

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "grid/BlockedCodec.h"

namespace zlibvideo {
namespace {

/// Reads a message into an outline. Each step returns false after it has set the fault.
class OutlineReader {
 public:
  OutlineReader(ByteSpan message, MessageOutline* outline)
      : fSize(message.size), fCursor(message), fOutline(outline) {}

  [[nodiscard]] bool Read() {
    if (!ReadHeader()) return false;
    if (fOutline->header->codecType == kCodecTypeVersion2 && !ReadFlagsAndPalette()) return false;
    if (!ReadPass()) return false;
    const bool hasSecondPass = (fOutline->flags & kFlagSecondPass) != 0;
    if (hasSecondPass && fCursor.Remaining() != 0 && !ReadPass()) return false;
    fOutline->unread = fCursor.Remaining();
    return true;
  }

 private:
  unsigned int Offset() const { return fSize - fCursor.Remaining(); }

  bool Fail(std::string what, unsigned int offset, std::optional<BlockPlace> place = {}) {
    fOutline->fault = Failure{std::move(what), offset, place};
    return false;
  }

  bool ReadHeader() {
    FrameHeader header;
    if (FrameHeader::Read(&fCursor, &header)) fOutline->header = header;
    if (fSize == 0) return Fail("it is empty", 0);
    if (fSize < FrameHeader::kMinMessageSize) return Fail("it is too short for a message", fSize);
    if (header.frameType == FrameHeader::kInvalidFrameType) return Fail("its frame type is 0", 0);
    if (!header.IsValid()) return Fail("its picture has no pixels", 1);

    std::int32_t cut = 0;
    fOutline->gridWidth = BlockedCodec::CalcGridSize(header.imageWidth, header.blockWidth, &cut);
    fOutline->gridHeight = BlockedCodec::CalcGridSize(header.imageHeight, header.blockHeight, &cut);
    return true;
  }

  bool ReadFlagsAndPalette() {
    // A message of the shortest size has a flags byte.
    static_cast<void>(fCursor.ReadU8(&fOutline->flags));
    if ((fOutline->flags & kFlagPalette) == 0) return true;

    std::uint16_t size = 0;
    ByteCursor sizeField = fCursor;
    if (!sizeField.ReadU16(&size) || !ReadPaletteRecord(&fCursor, &fOutline->palette)) {
      return Fail("it ends before the size of its palette", Offset());
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
    MessageOutline::Record entry{{}, place, Offset()};
    if (!BlockRecord::Read(&fCursor, fOutline->header->codecType, &entry.record)) {
      return Fail(entry.record.IsEmpty() ? "its record reaches past the end of the message"
                                         : "its record is too short for its header",
                  entry.offset, place);
    }
    fOutline->records.push_back(entry);
    return true;
  }

  const unsigned int fSize;
  ByteCursor fCursor;
  MessageOutline* const fOutline;
};

}  // namespace

MessageOutline MessageOutline::Read(ByteSpan message) {
  MessageOutline outline;
  // The outline holds the fault.
  static_cast<void>(OutlineReader(message, &outline).Read());
  return outline;
}

}  // namespace zlibvideo
