#ifndef ZLIBVIDEO_TOOLS_RECORD_FRAMEENCODER_H
#define ZLIBVIDEO_TOOLS_RECORD_FRAMEENCODER_H

#include <cstddef>
#include <optional>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "tools/pictures/Picture.h"
#include "tools/record/BlockEncoder.h"
#include "tools/record/DecoderModel.h"
#include "tools/record/RecordOptions.h"
#include "tools/record/ReducedColors.h"

namespace zlibvideo {

/// Turns each picture of a recording into a message, in order.
///
/// Every message is decoded as it is made, and a block that would not show the pixels it should is
/// an error here rather than when the recording is played. Errors throw `RecordError`. The
/// encoder must not be used after an error.
class FrameEncoder {
 public:
  /// For pictures of this size in pixels, 1 to `FrameHeader::kMaxImageSize` in each direction.
  FrameEncoder(int width, int height, const RecordOptions& options);

  /// The message of the next picture, from its frame header on. Valid until the next call.
  const std::vector<unsigned char>& Encode(const Picture& picture);

 private:
  /// A walk over the blocks.
  struct Pass {
    /// The pixels that blocks show after this pass, if it sends them.
    const Picture& target;
    /// The pixels that all blocks show after the last pass.
    const Picture& result;
    BlockEncoder::Forms forms;
    bool sendAll = false;

    /// Whether the block shows `target` or `result` already, and is not sent.
    bool IsShownBy(const BitmapDataBlock& block) const;
  };

  bool StartsKeyFrame() const;
  void WriteHeader(bool keyFrame);
  void WriteVersion2Body(const Picture& picture, bool keyFrame);
  void WritePalette();
  /// The picture in `fColors`.
  Picture Reduce(const Picture& picture) const;
  /// Whether any block was sent.
  bool WritePass(const Pass& pass);
  /// The payload of each block of the pass, in order. Nothing for a block that is not sent.
  std::vector<std::optional<BlockPayload>> EncodeBlocks(const Pass& pass);
  void AppendPayload(const BitmapDataBlock& block, const BlockPayload& payload);
  void AppendSize(std::size_t size);
  void CheckPass(const Pass& pass, std::size_t start);

  RecordOptions fOptions;
  FrameHeader fHeader;
  DecoderModel fDecoder;
  /// The blocks of `fDecoder`, in the order in which a pass sends them.
  std::vector<BitmapDataBlock*> fBlocks;
  BlockEncoder fBlockEncoder;
  std::optional<ReducedColors> fColors;
  std::vector<unsigned char> fMessage;
  unsigned long fMessagesMade = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_FRAMEENCODER_H
