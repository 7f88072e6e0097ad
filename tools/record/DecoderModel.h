#ifndef ZLIBVIDEO_TOOLS_RECORD_DECODERMODEL_H
#define ZLIBVIDEO_TOOLS_RECORD_DECODERMODEL_H

#include <cstdint>
#include <vector>

#include "decoder/ZLibVideoDecompressor.h"

namespace zlibvideo {

/// A decoder that receives each recorded message, so it holds the blocks as a player will.
class DecoderModel : public ZLibVideoDecompressor {
 public:
  DecoderModel() : ZLibVideoDecompressor(nullptr, nullptr) {}

  std::int32_t GridWidth() const { return fGridWidth; }
  std::int32_t GridHeight() const { return fGridHeight; }

  /// Decodes the palette record, or the pass of block records, that begins at `start` and ends
  /// with `message`. False when any of it is not as it should be.
  [[nodiscard]] bool ApplyPalette(std::vector<unsigned char>* message, std::size_t start);
  [[nodiscard]] bool ApplyPass(std::vector<unsigned char>* message, std::size_t start,
                               int codecType);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_DECODERMODEL_H
