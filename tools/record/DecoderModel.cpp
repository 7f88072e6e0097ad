#include "tools/record/DecoderModel.h"

#include "bitstream/Priming.h"

namespace zlibvideo {

bool DecoderModel::ApplyPalette(std::vector<unsigned char>* message, std::size_t start) {
  const auto size = static_cast<unsigned int>(message->size() - start);
  return UnpackPalette(message->data() + start, size) == static_cast<int>(size);
}

bool DecoderModel::ApplyPass(std::vector<unsigned char>* message, std::size_t start,
                             int codecType) {
  CheckScratchColorBuffer();
  ClearProcessedFlags();
  const auto size = static_cast<unsigned int>(message->size() - start);
  return UnpackBlocks(message->data() + start, size, static_cast<char>(codecType)) ==
         static_cast<int>(size);
}

ByteSpan DecoderModel::Dictionary(BitmapDataBlock* block, unsigned int format) {
  block->fFormat = static_cast<std::uint8_t>(format);  // as reading the record will set it
  return PrimingDictionary(*block);
}

}  // namespace zlibvideo
