#ifndef ZLIBVIDEO_DECODER_ZLIBVIDEODECOMPRESSOR_H
#define ZLIBVIDEO_DECODER_ZLIBVIDEODECOMPRESSOR_H

#include <cstddef>

#include "../grid/BlockedCodec.h"
#include "../host/Export.h"
#include "../host/VideoDecompressor.h"
#include "Version.h"

/// Decoder of a video stream of codec type 3 (version 1) or 6 (version 2). It may be used and
/// destroyed through either base. The host's reference count governs its life. It keeps the decoded
/// blocks and nothing else. Key frames reset nothing. It starts no threads and uses no locks: calls
/// on an object must not overlap. A host's loop:
///
///   auto* decoder = new ZLibVideoDecompressor(player, stream);
///   while (NextMessage(&message)) {
///     // On failure the bitmap still shows the last picture. Go on with the next message.
///     const bool shown = decoder->DecompressVideoMessage(video, &message, false, false) == 1;
///   }
///   decoder->DecRef();
class ZLIBVIDEO_EXPORT ZLibVideoDecompressor : public VideoDecompressor, public BlockedCodec {
 public:
  /// Hands both pointers to the host base.
  ZLibVideoDecompressor(CorePlayer* player, NetStream* stream);
  ~ZLibVideoDecompressor() override;

  using BlockedCodec::operator new;
  using BlockedCodec::operator delete;

  /// 3 for index 0, 6 for index 1, else -1.
  int VideoMessageCodecType(int index) const override;
  /// Decodes the payload of `message`, not null, as `DecompressVideo` does. 1 on success, else 0.
  /// The first flag is not read.
  int DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video, TCMessage* message, bool unused,
                             bool skipPush) override;
  /// `DecompressVideo` of `length` bytes with drawing. A negative length fails.
  bool DecompressVideoEmbedded(Vorn::GCAPI::GCRef<SObject> video, unsigned char* bytes,
                               int length) override;
  /// Whether the bytes hold a frame header, of five bytes, whose frame type is key frame.
  bool VideoEmbeddedIsKeyFrame(Vorn::GCAPI::GCRef<SObject> video, unsigned char* bytes,
                               int length) override;
  /// Null.
  void* GetInstance() override;
  /// True. Nothing is discarded.
  bool FlushAfterSeek() override;
  bool Flush() override;
  /// Decompresses a whole zlib stream (RFC 1950). An empty source succeeds and leaves the length
  /// unchanged. Otherwise the length becomes the bytes produced, whatever the result. False if the
  /// source does not begin with a complete stream, if the output does not fit, or if zlib has no
  /// memory. Bytes of the source behind the stream are ignored. The room behind the bytes produced
  /// holds whatever zlib left there.
  [[nodiscard]] bool DecompressBlock(unsigned char* destination, unsigned int* destinationLength,
                                     const unsigned char* source,
                                     unsigned int sourceLength) override;

  /// Decodes a message of `length` bytes, which begins with its frame header, into the grid. With a
  /// video object, has the host size its bitmap and, unless `skipPush`, draws the picture into the
  /// bitmap, if there is a bitmap.
  ///
  /// False if the message was not decoded. Then the bitmap and the count of decoded messages are
  /// unchanged, blocks decoded before the fault keep their new contents, and a valid header with a
  /// new geometry has replaced the grid by an empty grid. A well-formed message of a codec type
  /// other than 3 and 6 changes no block, and is drawn and counted.
  ///
  /// `video` may be null. `message` may be null only if `length` is below 7, which fails. Its bytes
  /// are only read, and are not needed afterwards. Of a message of 4 GiB or more, the low 32 bits
  /// of `length` say how many bytes are decoded.
  ///
  /// The host allocator's `std::bad_alloc` passes through: the message counts as not decoded, and
  /// the object can decode the next message. Exceptions of the host from sizing or drawing the
  /// bitmap pass through as well: the blocks are decoded, but the message is not counted, and a
  /// locked bitmap stays locked.
  [[nodiscard]] bool DecompressVideo(Vorn::GCAPI::GCRef<SObject> video, unsigned char* message,
                                     unsigned long length, bool skipPush);
};

#endif  // ZLIBVIDEO_DECODER_ZLIBVIDEODECOMPRESSOR_H
