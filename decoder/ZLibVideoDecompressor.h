#ifndef ZLIBVIDEO_DECODER_ZLIBVIDEODECOMPRESSOR_H
#define ZLIBVIDEO_DECODER_ZLIBVIDEODECOMPRESSOR_H

#include <cstddef>

#include "../grid/BlockedCodec.h"
#include "../host/Export.h"
#include "../host/VideoDecompressor.h"
#include "Version.h"

/// Decoder of one video stream of codec type 3 (version 1) or 6 (version 2). It may be used and
/// destroyed through either base; the host's reference count governs its life. It keeps what the
/// stream decoded so far and nothing else; key frames reset nothing. It starts no threads and
/// takes no locks: calls on one object must not overlap. A host's loop:
///
///   auto* decoder = new ZLibVideoDecompressor(player, stream);
///   while (NextMessage(&message)) {
///     // On failure the bitmap still shows the last picture; go on with the next message.
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
  /// Decodes the payload of `message` as `DecompressVideo` does; 1 on success, else 0. `message` is
  /// not null. The first flag is not read.
  int DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video, TCMessage* message, bool unused,
                             bool skipPush) override;
  /// `DecompressVideo` of `length` bytes with drawing; a negative length fails.
  bool DecompressVideoEmbedded(Vorn::GCAPI::GCRef<SObject> video, unsigned char* bytes,
                               int length) override;
  /// Whether there are at least the five bytes of a frame header and they say key frame.
  bool VideoEmbeddedIsKeyFrame(Vorn::GCAPI::GCRef<SObject> video, unsigned char* bytes,
                               int length) override;
  /// Null.
  void* GetInstance() override;
  /// True; nothing is discarded.
  bool FlushAfterSeek() override;
  bool Flush() override;
  /// zlib decompression of one whole buffer (RFC 1950). An empty source succeeds and leaves the
  /// length as it was. Otherwise the length becomes the bytes produced, whatever the result; false
  /// when the source does not begin with a complete stream, does not fit, or zlib has no memory.
  /// Bytes of the source behind the stream are not looked at. Behind the bytes produced, the rest
  /// of the room holds whatever zlib left there.
  [[nodiscard]] bool DecompressBlock(unsigned char* destination, unsigned int* destinationLength,
                                     const unsigned char* source,
                                     unsigned int sourceLength) override;

  /// Decodes one message of `length` bytes, beginning with its frame header, into the grid. With a
  /// video object, has the host size its bitmap and, unless `skipPush`, composes the picture into
  /// it; a video object without a bitmap is passed over. False when the message was not decoded:
  /// the bitmap and the count of decoded messages are then untouched, blocks decoded before the
  /// fault keep their new contents, and a valid header with a new geometry has replaced the grid by
  /// an empty one. A well-formed message of a codec type other than 3 and 6 changes no block, but
  /// is drawn and counted like any other.
  ///
  /// `video` may be null. `message` may be null only where `length` is below 7, which fails; its
  /// bytes may be anything, are only read, and are not needed afterwards. Of a message of 4 GiB or
  /// more, only as many bytes are decoded as the low 32 bits of `length` say. The host allocator's
  /// `std::bad_alloc` passes through: the message then counts as not decoded, and the object can
  /// take the next one. So does what else the host throws while the bitmap is sized or drawn: the
  /// blocks are then decoded, but the message is not counted, and a bitmap that was locked stays
  /// locked.
  [[nodiscard]] bool DecompressVideo(Vorn::GCAPI::GCRef<SObject> video, unsigned char* message,
                                     unsigned long length, bool skipPush);
};

#endif  // ZLIBVIDEO_DECODER_ZLIBVIDEODECOMPRESSOR_H
