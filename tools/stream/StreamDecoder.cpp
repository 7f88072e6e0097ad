#include "tools/stream/StreamDecoder.h"

#include <new>

#include "host/standin/StandInMessage.h"
#include "tools/terminal/StandardError.h"

namespace zlibvideo {

StreamDecoder::StreamDecoder() : fDecoder(new InspectingDecoder(nullptr, nullptr)) {}

void StreamDecoder::Restart() {
  fDecoder.reset(new InspectingDecoder(nullptr, nullptr));
}

bool StreamDecoder::Decode(const FileMessage& message) {
  constexpr bool kSkipPush = true;
  StandInMessage hostMessage(message.bytes, message.length);
  fChangedArea = {};
  if (fDecoder->DecompressVideoMessage(fVideo.Ref(), &hostMessage, false, kSkipPush) != 1) {
    return false;
  }
  fChangedArea = fDecoder->PushChanges(&fVideo.Bitmap());
  return true;
}

FrameView StreamDecoder::Frame() {
  const StandInBitmap& bitmap = fVideo.Bitmap();
  return {bitmap.Pixels().data(), bitmap.GetWidth(), bitmap.GetHeight()};
}

StreamEnd DecodeMessages(MessageFileReader* reader, StreamDecoder* decoder, std::uint64_t last,
                         bool showsProgress,
                         const std::function<void(const FileMessage&, bool)>& take) {
  using Result = MessageFileReader::Result;
  std::uint64_t done = reader->MessageCount();
  try {
    ProgressLine progress(showsProgress, "message", reader->FileSize());
    FileMessage message;
    while (done < last) {
      const Result result = reader->Next(&message);
      if (result != Result::kMessage) return {result, reader->Problem()};
      take(message, decoder->Decode(message));
      ++done;
      progress.Update(reader->BytesRead(), done);
    }
  } catch (const std::bad_alloc&) {
    return {Result::kReadError,
            reader->Name() + ": not enough memory for message " + std::to_string(done + 1)};
  }
  return {};  // without waiting for the rest, which a live stream may never send
}

}  // namespace zlibvideo
