#include "tools/record/DecoderModel.h"

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

}  // namespace zlibvideo
