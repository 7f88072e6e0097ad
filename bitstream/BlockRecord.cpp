#include "bitstream/BlockRecord.h"

#include "bitstream/FrameHeader.h"

namespace zlibvideo {

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
