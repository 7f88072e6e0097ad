#include "bitstream/BlockRecord.h"

#include "bitstream/FrameHeader.h"
#include "grid/BlockFormat.h"

namespace zlibvideo {
namespace {

bool ReadVersion2Header(ByteCursor* body, BlockRecord* record) {
  if (!body->ReadU8(&record->format)) return false;
  if ((record->format & kFormatDiffRows) == 0) return true;
  return body->ReadU8(&record->diffRowStart) && body->ReadU8(&record->diffRowCount);
}

}  // namespace

bool BlockRecord::Read(ByteCursor* cursor, int codecType, BlockRecord* record) {
  *record = {};
  std::uint16_t size = 0;
  ByteSpan bytes;
  if (!cursor->ReadU16(&size) || !cursor->ReadSpan(size, &bytes)) return false;

  record->size = size;
  if (record->IsEmpty()) return true;
  ByteCursor body(bytes);
  if (codecType == kCodecTypeVersion2 && !ReadVersion2Header(&body, record)) return false;
  record->payload = body.Rest();
  return true;
}

}  // namespace zlibvideo
