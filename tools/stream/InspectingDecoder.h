#ifndef ZLIBVIDEO_TOOLS_STREAM_INSPECTINGDECODER_H
#define ZLIBVIDEO_TOOLS_STREAM_INSPECTINGDECODER_H

#include "decoder/ZLibVideoDecompressor.h"

namespace zlibvideo {

/// A decoder that remembers how far it came in a message, for `Diagnose`. It decodes exactly as its
/// base does. Only `DecompressVideoMessage` forgets the message before.
class InspectingDecoder : public ZLibVideoDecompressor {
 public:
  /// A call of `DecompressBlock`, which decompresses every palette and every direct payload.
  struct Call {
    /// The start of the zlib stream, in the message. Null if there was no call.
    const unsigned char* source = nullptr;
    bool succeeded = true;
    /// Bytes.
    unsigned int produced = 0;
  };

  using ZLibVideoDecompressor::ZLibVideoDecompressor;

  int DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video, TCMessage* message, bool unused,
                             bool skipPush) override;
  bool DecompressBlock(unsigned char* destination, unsigned int* destinationLength,
                       const unsigned char* source, unsigned int sourceLength) override;

  /// Of the last message.
  const Call& FirstCall() const { return fFirstCall; }
  const Call& LastCall() const { return fLastCall; }

  /// The block of a cell of the grid. Null if there is no such block.
  const BitmapDataBlock* FindBlock(int row, int column) const;

 private:
  Call fFirstCall;
  Call fLastCall;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_INSPECTINGDECODER_H
