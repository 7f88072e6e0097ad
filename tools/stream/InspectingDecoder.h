#ifndef ZLIBVIDEO_TOOLS_STREAM_INSPECTINGDECODER_H
#define ZLIBVIDEO_TOOLS_STREAM_INSPECTINGDECODER_H

#include "decoder/ZLibVideoDecompressor.h"

namespace zlibvideo {

/// A decoder that remembers how far a message came, for `Diagnose`. It decodes exactly as its base
/// does. Use `DecompressVideoMessage`, which forgets the message before.
class InspectingDecoder : public ZLibVideoDecompressor {
 public:
  using ZLibVideoDecompressor::ZLibVideoDecompressor;

  int DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video, TCMessage* message, bool unused,
                             bool skipPush) override;
  bool DecompressBlock(unsigned char* destination, unsigned int* destinationLength,
                       const unsigned char* source, unsigned int sourceLength) override;

  /// Where in the message the last whole zlib stream that was tried begins; null when none was.
  const unsigned char* LastSource() const { return fLastSource; }
  /// Whether it was decompressed.
  bool LastSucceeded() const { return fLastSucceeded; }

  /// The block of a grid cell; null when there is no such block.
  BitmapDataBlock* FindBlock(int row, int column) const;

 private:
  const unsigned char* fLastSource = nullptr;
  bool fLastSucceeded = true;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_INSPECTINGDECODER_H
