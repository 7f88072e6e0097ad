#include "bitstream/FrameHeader.h"

#include <cstdint>

namespace zlibvideo {
namespace {

constexpr unsigned int kHighNibble = 0xF0;
constexpr unsigned int kLowNibble = 0x0F;

/// An axis: a block size code and a 12-bit image size in two bytes. The code lies in the high
/// nibble, so that masking it out multiplies it by 16 already.
void SplitAxis(unsigned int axis, int* blockSize, int* imageSize) {
  *blockSize = static_cast<int>((axis >> 8 & kHighNibble) + FrameHeader::kBlockSizeStep);
  *imageSize = static_cast<int>(axis & (kLowNibble << 8 | 0xFF));
}

void WriteAxis(int blockSize, int imageSize, unsigned char* bytes) {
  const int blockCode = blockSize - FrameHeader::kBlockSizeStep;
  bytes[0] = static_cast<unsigned char>(blockCode | imageSize >> 8);
  bytes[1] = static_cast<unsigned char>(imageSize & 0xFF);
}

}  // namespace

bool FrameHeader::Read(ByteCursor* cursor, FrameHeader* header) {
  ByteCursor fields = *cursor;
  std::uint8_t types = 0;
  std::uint16_t horizontal = 0;
  std::uint16_t vertical = 0;
  if (!fields.ReadU8(&types) || !fields.ReadU16(&horizontal) || !fields.ReadU16(&vertical)) {
    return false;
  }
  *cursor = fields;
  header->frameType = types >> 4;
  header->codecType = types & static_cast<int>(kLowNibble);
  SplitAxis(horizontal, &header->blockWidth, &header->imageWidth);
  SplitAxis(vertical, &header->blockHeight, &header->imageHeight);
  return true;
}

void FrameHeader::Write(unsigned char (&bytes)[kSize]) const {
  bytes[0] = static_cast<unsigned char>(frameType << 4 | codecType);
  WriteAxis(blockWidth, imageWidth, bytes + 1);
  WriteAxis(blockHeight, imageHeight, bytes + 3);
}

}  // namespace zlibvideo
