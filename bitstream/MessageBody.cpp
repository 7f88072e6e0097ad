#include "bitstream/MessageBody.h"

#include "bitstream/FrameHeader.h"

namespace zlibvideo {

bool ReadPaletteRecord(ByteCursor* cursor, ByteSpan* compressed) {
  *compressed = {};
  std::uint16_t size = 0;
  if (!cursor->ReadU16(&size)) return false;
  // A stream that does not fit is no failure yet: the bytes after the size are then parsed as block
  // records, which decide about the message.
  static_cast<void>(cursor->ReadSpan(size, compressed));
  return true;
}

bool BlockHeader::Read(ByteCursor* cursor, BlockHeader* header) {
  *header = {};
  if (!cursor->ReadU8(&header->format)) return false;
  if (!HasBand(header->format)) return true;
  return cursor->ReadU8(&header->diffRowStart) && cursor->ReadU8(&header->diffRowCount);
}

void BlockHeader::Write(unsigned char (&bytes)[kMaxSize]) const {
  bytes[0] = format;
  bytes[1] = diffRowStart;
  bytes[2] = diffRowCount;
}

bool BlockRecord::Read(ByteCursor* cursor, int codecType, BlockRecord* record) {
  *record = {};
  std::uint16_t size = 0;
  ByteSpan bytes;
  if (!cursor->ReadU16(&size) || !cursor->ReadSpan(size, &bytes)) return false;

  record->size = size;
  if (record->IsEmpty()) return true;
  ByteCursor body(bytes);
  if (codecType == kCodecTypeVersion2 && !BlockHeader::Read(&body, &record->header)) return false;
  record->payload = body.Rest();
  return true;
}

}  // namespace zlibvideo
