#include "tools/stream/StreamDecoder.h"

#include "host/standin/StandInMessage.h"

namespace zlibvideo {

StreamDecoder::StreamDecoder() : fDecoder(new InspectingDecoder(nullptr, nullptr)) {}

bool StreamDecoder::Decode(const FileMessage& message) {
  StandInMessage hostMessage(message.bytes, message.length);
  return fDecoder->DecompressVideoMessage(fVideo.Ref(), &hostMessage, false, false) == 1;
}

FrameView StreamDecoder::Frame() {
  const StandInBitmap& bitmap = fVideo.Bitmap();
  return {bitmap.Pixels().data(), bitmap.GetWidth(), bitmap.GetHeight()};
}

}  // namespace zlibvideo
