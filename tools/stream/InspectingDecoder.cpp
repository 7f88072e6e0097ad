#include "tools/stream/InspectingDecoder.h"

namespace zlibvideo {

int InspectingDecoder::DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video, TCMessage* message,
                                              bool unused, bool skipPush) {
  fFirstCall = {};
  fLastCall = {};
  return ZLibVideoDecompressor::DecompressVideoMessage(video, message, unused, skipPush);
}

bool InspectingDecoder::DecompressBlock(unsigned char* destination, unsigned int* destinationLength,
                                        const unsigned char* source, unsigned int sourceLength) {
  const bool succeeded =
      ZLibVideoDecompressor::DecompressBlock(destination, destinationLength, source, sourceLength);
  fLastCall = {source, succeeded, *destinationLength};
  if (fFirstCall.source == nullptr) fFirstCall = fLastCall;
  return succeeded;
}

const BitmapDataBlock* InspectingDecoder::FindBlock(int row, int column) const {
  if (fBlocks == nullptr || row < 0 || row >= fGridHeight || column < 0 || column >= fGridWidth) {
    return nullptr;
  }
  return GetBlock(row, column);
}

}  // namespace zlibvideo
