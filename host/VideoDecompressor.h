#ifndef ZLIBVIDEO_HOST_VIDEODECOMPRESSOR_H
#define ZLIBVIDEO_HOST_VIDEODECOMPRESSOR_H

#include <cstdint>

#include "EBitmapType.h"
#include "Export.h"
#include "GCRef.h"
#include "HostObject.h"
#include "SObject.h"

class CorePlayer;
class NetStream;
class QuarnString;
struct SPOINT;
struct SRECT;
struct TCMessage;

/// The host's base of every video decoder. Operations with a body here are defaults that come with
/// this interface. Every decoder defines the pure operations. The host defines the others: the
/// constructor, the destructor, `AddRef`, `DeleteBuffers`, `ReallocBuffers`, `DeleteHWCodec` and
/// `ReallocBitmap`. The order of the virtual operations and of the members is part of the
/// interface.
///
/// A reference count governs the life of a decoder: the creator holds the first reference. The
/// count is a plain integer, so calls on a decoder must not overlap.
class ZLIBVIDEO_EXPORT VideoDecompressor {
 public:
  VideoDecompressor(CorePlayer* player, NetStream* stream);
  VideoDecompressor(const VideoDecompressor&) = delete;
  VideoDecompressor& operator=(const VideoDecompressor&) = delete;

  virtual ~VideoDecompressor();

  /// The codec types that the decoder serves, by index from 0. -1 past the last index.
  virtual int VideoMessageCodecType(int index) const = 0;
  /// 1 if the message was decoded, else 0. See the decoder.
  virtual int DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video, TCMessage* message,
                                     bool unused, bool skipPush) = 0;
  /// Decodes `length` message bytes. True on success. See the decoder.
  virtual bool DecompressVideoEmbedded(Vorn::GCAPI::GCRef<SObject> video, unsigned char* bytes,
                                       int length) = 0;
  /// Whether `length` message bytes start a key frame.
  virtual bool VideoEmbeddedIsKeyFrame(Vorn::GCAPI::GCRef<SObject> video, unsigned char* bytes,
                                       int length) = 0;
  /// Whether a message may be left out without harm to later messages.
  virtual bool CanDropDecode(TCMessage* /*message*/) { return false; }
  /// The library object that the decoder wraps. Null if it wraps no library.
  virtual void* GetInstance() = 0;
  /// Drops all pictures that the decoder has read but not shown, after a seek or at any time. True
  /// if no picture is left to drop.
  virtual bool FlushAfterSeek() = 0;
  virtual bool Flush() = 0;
  /// Host services around the buffers of `video`. No decoder calls them.
  virtual void DeleteBuffers(Vorn::GCAPI::GCRef<SObject> video);
  virtual void ReallocBuffers(Vorn::GCAPI::GCRef<SObject> video);
  /// Raises the reference count by 1.
  virtual void AddRef();
  /// Lowers the reference count by 1. At 0 the decoder destroys itself.
  virtual void DecRef() {
    if (--fRefCount == 0) delete this;
  }
  /// How full the host should keep its buffer of messages: below the low mark it buffers, up to the
  /// high mark. The unit is the host's. 0 if the decoder has no wish.
  virtual int GetLowWater() { return 0; }
  virtual int GetHighWater() { return 0; }
  /// How long a picture waits in the decoder before it is shown, in pictures and in time (unit of
  /// the host). 0 if each message shows its own picture.
  virtual int GetDPBSize() { return 0; }
  virtual int GetDPBTime() { return 0; }
  /// Whether the host must fill its buffer anew at `time`, in its unit.
  virtual bool NeedBufferingRestart(unsigned int /*time*/) const { return false; }
  /// The texture, still owned by the decoder. Null while reloading is disabled. Clears a pending
  /// reload.
  virtual HostObject* ReloadVideoTexture(Vorn::GCAPI::GCRef<SObject> /*video*/) {
    return Reload(fVideoTexture);
  }
  /// The buffer, on the same terms as `ReloadVideoTexture`.
  virtual HostObject* ReloadIVideoBuffer(Vorn::GCAPI::GCRef<SObject> /*video*/) {
    return Reload(fVideoBuffer);
  }
  /// Asks for a reload.
  virtual void ReloadVideoBuffer(Vorn::GCAPI::GCRef<SObject> /*video*/) { fReloadPending = true; }
  /// Destroys the texture, if it exists, and then notes whether the buffer is absent too.
  virtual void DeleteVideoTexture() { DeleteResource(&fVideoTexture, &fVideoBuffer); }
  /// Destroys the buffer, if it exists, and then notes whether the texture is absent too.
  virtual void DeleteVideoBuffer() { DeleteResource(&fVideoBuffer, &fVideoTexture); }
  /// Restores pictures that later pictures refer to. Does nothing: the decoder keeps them itself.
  virtual void ReloadReferenceFrames() {}
  /// Host service. No decoder calls it.
  virtual void DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> video);
  /// Whether the decoder has a name. Without a name, `name` is unchanged.
  virtual bool GetCodecName(QuarnString& /*name*/) const { return false; }
  /// Size in pixels after a transformation by the decoder. 0 without a transformation.
  virtual int GetTransformedPixelWidth() { return 0; }
  virtual int GetTransformedPixelHeight() { return 0; }
  /// Destroys the codec of the graphics processor, if it exists.
  virtual void DeleteGPUCodec() {
    delete fGPUCodec;
    fGPUCodec = nullptr;
  }

 protected:
  /// Host service. Afterwards the bitmap surface of `video` has at least `width` × `height` pixels
  /// of 4 bytes, or `video` has no bitmap: the decoder draws there next and ignores the result. The
  /// decoder passes false, false, `kBitmapVideoFrame`, null and null. An exception reaches the
  /// caller of the decoder. The blocks of the message are decoded then, but the message is not
  /// counted.
  bool ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height, bool flag1,
                     bool flag2, EBitmapType type, SRECT const* area, SPOINT const* origin);

  HostObject* fVideoTexture = nullptr;
  HostObject* fVideoBuffer = nullptr;
  std::int32_t fRefCount = 1;
  /// Messages decoded so far, drawn or not.
  std::uint32_t fDecodedFrameCount = 0;
  /// A reload was asked for and has not happened.
  bool fReloadPending = false;
  /// Reloads give null.
  bool fReloadDisabled = false;
  /// The texture or the buffer was destroyed, and the other is absent too.
  bool fVideoResourcesReleased = false;
  HostObject* fGPUCodec = nullptr;

 private:
  HostObject* Reload(HostObject* resource) {
    if (fReloadDisabled) return nullptr;
    fReloadPending = false;
    return resource;
  }

  void DeleteResource(HostObject** resource, HostObject* const* other) {
    if (*resource == nullptr) return;
    delete *resource;
    *resource = nullptr;
    // Read only now: the resource may have destroyed the other.
    if (*other == nullptr) fVideoResourcesReleased = true;
  }
};

#endif  // ZLIBVIDEO_HOST_VIDEODECOMPRESSOR_H
