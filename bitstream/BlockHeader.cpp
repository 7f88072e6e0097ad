#include "bitstream/BlockHeader.h"

namespace zlibvideo {

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

}  // namespace zlibvideo
