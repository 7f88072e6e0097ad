// Fuzz target: the messages of a file against one decoder. All of the bitmap is read after each.

#include <zlib.h>

#include <span>

#include "decoder/ZLibVideoDecompressor.h"
#include "fuzz/Messages.h"
#include "host/standin/StandInMessage.h"
#include "host/standin/StandInVideoObject.h"
#include "output/RowWidener.h"

namespace zlibvideo {
namespace {

unsigned long ShownCrc(StandInVideoObject* video) {
  const std::span<const unsigned char> pixels = video->Bitmap().Pixels();
  return crc32_z(0, pixels.data(), pixels.size());
}

void DecodeMessage(ZLibVideoDecompressor* decoder, Bytes* bytes, StandInVideoObject* video) {
  FrameHeader header;
  if (!ReadSmallHeader(*bytes, &header) && bytes->size() >= FrameHeader::kSize) return;
  const unsigned long before = ShownCrc(video);
  StandInMessage message(bytes->data(), SpanOf(*bytes).size);
  // The decoder makes no difference between frame types. Here one stands for a caller's wish.
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
  auto messages = SplitMessages({data, static_cast<unsigned int>(size)});
  for (Bytes& message : messages) DecodeMessage(decoder, &message, &video);
  decoder->DecRef();
  return 0;
}

}  // namespace zlibvideo
