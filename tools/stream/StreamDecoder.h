#ifndef ZLIBVIDEO_TOOLS_STREAM_STREAMDECODER_H
#define ZLIBVIDEO_TOOLS_STREAM_STREAMDECODER_H

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "host/SRECT.h"
#include "host/standin/StandInVideoObject.h"
#include "tools/pictures/Picture.h"
#include "tools/stream/InspectingDecoder.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {

/// A decoder and the video object of the stand-in host that it draws into.
class StreamDecoder {
 public:
  StreamDecoder();

  /// Decodes the next message of the stream. Returns false when it failed: the picture is as
  /// before. Throws `std::bad_alloc` without memory.
  [[nodiscard]] bool Decode(const FileMessage& message);
  /// Decodes the next message as the first of a stream.
  void Restart();
  /// The part of the picture that the last message drew, in pixels. Empty after a failure.
  SRECT ChangedArea() const { return fChangedArea; }
  /// The current picture. Valid until the next message.
  FrameView Frame();
  /// For `Diagnose`, directly after a failure.
  const InspectingDecoder& Decoder() const { return *fDecoder; }

 private:
  struct DropReference {
    void operator()(VideoDecompressor* decoder) const { decoder->DecRef(); }
  };

  StandInVideoObject fVideo;
  std::unique_ptr<InspectingDecoder, DropReference> fDecoder;
  SRECT fChangedArea = {};
};

/// The reason why decoding a message file ended.
struct StreamEnd {
  /// Also `kEnd` after the last message that is wanted, and `kReadError` without memory.
  MessageFileReader::Result result = MessageFileReader::Result::kEnd;
  /// The same in words, with the name of the file. Empty after the last message that is wanted.
  std::string problem;
};

/// As the last message: all messages.
inline constexpr std::uint64_t kToTheEnd = std::numeric_limits<std::uint64_t>::max();

/// Decodes the messages of `reader` up to number `last`, from 1, and calls `take(message, decoded)`
/// after each. `decoded` is false for a message that failed.
StreamEnd DecodeMessages(MessageFileReader* reader, StreamDecoder* decoder, std::uint64_t last,
                         bool showsProgress,
                         const std::function<void(const FileMessage&, bool)>& take);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_STREAMDECODER_H
