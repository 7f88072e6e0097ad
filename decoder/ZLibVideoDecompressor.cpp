#include "decoder/ZLibVideoDecompressor.h"

#include <zlib.h>

#include <cstdint>
#include <iterator>

#include "bitstream/ByteCursor.h"
#include "bitstream/FrameHeader.h"
#include "host/TCMessage.h"

using zlibvideo::ByteCursor;
using zlibvideo::FrameHeader;

namespace {

constexpr int kCodecTypes[] = {zlibvideo::kCodecTypeVersion1, zlibvideo::kCodecTypeVersion2};

std::uint32_t PayloadLength(const TCMessage& message) {
  std::uint32_t length = 0;
  ByteCursor cursor(message.fPayloadLength, TCMessage::kLengthBytes);
  static_cast<void>(cursor.ReadU24(&length));
  return length;
}

}  // namespace

ZLibVideoDecompressor::ZLibVideoDecompressor(CorePlayer* player, NetStream* stream)
    : VideoDecompressor(player, stream) {
  fReloadDisabled = true;
  fVideoResourcesReleased = false;
}

ZLibVideoDecompressor::~ZLibVideoDecompressor() = default;

int ZLibVideoDecompressor::VideoMessageCodecType(int index) const {
  if (index < 0 || index >= static_cast<int>(std::size(kCodecTypes))) return -1;
  return kCodecTypes[index];
}

int ZLibVideoDecompressor::DecompressVideoMessage(Vorn::GCAPI::GCRef<SObject> video,
                                                  TCMessage* message, bool /*unused*/,
                                                  bool skipPush) {
  return DecompressVideo(video, message->fPayload, PayloadLength(*message), skipPush) ? 1 : 0;
}

bool ZLibVideoDecompressor::DecompressVideoEmbedded(Vorn::GCAPI::GCRef<SObject> video,
                                                    unsigned char* bytes, int length) {
  if (length < 0) return false;
  return DecompressVideo(video, bytes, static_cast<unsigned long>(length), false);
}

bool ZLibVideoDecompressor::VideoEmbeddedIsKeyFrame(Vorn::GCAPI::GCRef<SObject> /*video*/,
                                                    unsigned char* bytes, int length) {
  if (length < 0) return false;
  ByteCursor cursor(bytes, static_cast<unsigned int>(length));
  FrameHeader header;
  return FrameHeader::Read(&cursor, &header) && header.IsKeyFrame();
}

void* ZLibVideoDecompressor::GetInstance() {
  return nullptr;
}

bool ZLibVideoDecompressor::FlushAfterSeek() {
  return true;
}

bool ZLibVideoDecompressor::Flush() {
  return true;
}

bool ZLibVideoDecompressor::DecompressBlock(unsigned char* destination,
                                            unsigned int* destinationLength,
                                            const unsigned char* source,
                                            unsigned int sourceLength) {
  if (sourceLength == 0) return true;
  uLongf produced = *destinationLength;
  const int result = uncompress(destination, &produced, source, sourceLength);
  *destinationLength = static_cast<unsigned int>(produced);
  return result == Z_OK;
}

bool ZLibVideoDecompressor::DecompressVideo(Vorn::GCAPI::GCRef<SObject> video,
                                            unsigned char* message, unsigned long length,
                                            bool skipPush) {
  if (length < FrameHeader::kMinMessageSize) return false;

  ByteCursor cursor(message, FrameHeader::kSize);
  FrameHeader header;
  if (!FrameHeader::Read(&cursor, &header) || !header.IsValid()) return false;
  if (!SetupCodec(header.imageWidth, header.imageHeight, header.blockWidth, header.blockHeight)) {
    return false;
  }
  // From here on, bytes are counted in 32 bits: of a longer message, only the beginning is read.
  const auto size = static_cast<std::uint32_t>(length & 0xFFFFFFFF);
  if (UnpackMessage(message, size, static_cast<char>(header.codecType), 0) < 0) return false;

  if (video) {
    ReallocBitmap(video, header.imageWidth, header.imageHeight, false, false, kBitmapVideoFrame,
                  nullptr, nullptr);
    // Looked up only now: sizing may have made or exchanged it.
    SBitmapCore* bitmap = skipPush ? nullptr : video->GetBitmapCore();
    if (bitmap != nullptr) PushFrame(bitmap);
  }
  ++fDecodedFrameCount;
  return true;
}
