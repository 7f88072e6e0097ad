#ifndef ZLIBVIDEO_TOOLS_STREAM_STREAMDECODER_H
#define ZLIBVIDEO_TOOLS_STREAM_STREAMDECODER_H

#include <memory>

#include "host/standin/StandInVideoObject.h"
#include "tools/pictures/Picture.h"
#include "tools/stream/InspectingDecoder.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {

/// One decoder with a video object of the stand-in host to draw into.
class StreamDecoder {
 public:
  StreamDecoder();

  /// Decodes the next message of the stream. False when it failed; the picture is then as before.
  /// Throws `std::bad_alloc` without memory.
  [[nodiscard]] bool Decode(const FileMessage& message);
  /// The picture as it stands. Valid until the next message.
  FrameView Frame();
  /// For `Diagnose`, directly after a failure.
  const InspectingDecoder& Decoder() const { return *fDecoder; }

 private:
  struct DropReference {
    void operator()(VideoDecompressor* decoder) const { decoder->DecRef(); }
  };

  StandInVideoObject fVideo;
  std::unique_ptr<InspectingDecoder, DropReference> fDecoder;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_STREAMDECODER_H
