// Fuzz target: a decoder decodes the messages of a file. All of the bitmap is read after each.

#include <zlib.h>

#include <algorithm>
#include <span>

#include "bitstream/FrameHeader.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "fuzz/Require.h"
#include "host/BitmapPixel.h"
#include "host/standin/StandInMessage.h"
#include "host/standin/StandInVideoObject.h"
#include "tests/StreamBuilder.h"

namespace zlibvideo {
namespace {

unsigned long ShownCrc(StandInVideoObject* video) {
  const std::span<const unsigned char> pixels = video->Bitmap().Pixels();
  return crc32_z(0, pixels.data(), pixels.size());
}

/// Larger pictures take the fuzzer too much time.
constexpr int kMaxPixels = 1 << 16;

void DecodeMessage(ZLibVideoDecompressor* decoder, ByteSpan bytes, StandInVideoObject* video) {
  FrameHeader header;
  ByteCursor cursor(bytes);
  if (FrameHeader::Read(&cursor, &header) && header.imageWidth * header.imageHeight > kMaxPixels) {
    return;
  }
  const unsigned long before = ShownCrc(video);
  Bytes copy(bytes.data, bytes.data + bytes.size);  // its memory ends where the message ends
  StandInMessage message(copy.data(), bytes.size);
  // All frame types are the same to the decoder. This frame type is a message without a video
  // object.
  const bool visible = header.frameType != 15;
  const bool decoded = decoder->DecompressVideoMessage(visible ? video->Ref() : nullptr, &message,
                                                       false, false) == 1;
  const bool same = ShownCrc(video) == before;
  Require(!video->Bitmap().IsLocked());
  if (!decoded || !visible) return Require(same);
  const std::span<const unsigned char> pixels = video->Bitmap().Pixels();
  for (std::size_t i = 3; i < pixels.size(); i += kBitmapPixelBytes) Require(pixels[i] == 0xFF);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto* decoder = new ZLibVideoDecompressor(nullptr, nullptr);
  StandInVideoObject video;
  ByteCursor file(data, static_cast<unsigned int>(size));
  std::uint32_t length = 0;
  ByteSpan message;  // the last may be cut off
  while (file.ReadU24(&length) && file.ReadSpan(std::min(length, file.Remaining()), &message)) {
    DecodeMessage(decoder, message, &video);
  }
  decoder->DecRef();
  return 0;
}

}  // namespace zlibvideo
