// A host with little memory: it reads the header of each message, and refuses a message that could
// cost more than its budget. A header of seven bytes can demand a grid of 65,536 blocks.

#include <zlibvideo/bitstream/FrameHeader.h>
#include <zlibvideo/bitstream/MemoryBound.h>
#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/standin/StandInVideoObject.h>

#include <cstdint>
#include <cstdio>

namespace {

constexpr std::uint64_t kBudget = std::uint64_t{16} << 20;

bool IsAffordable(const unsigned char* message, unsigned int length) {
  zlibvideo::ByteCursor cursor(message, length);
  zlibvideo::FrameHeader header;
  // The decoder itself refuses a message without a valid header.
  if (!zlibvideo::FrameHeader::Read(&cursor, &header) || !header.IsValid()) return true;
  header.codecType = zlibvideo::kCodecTypeVersion2;  // which a later message may have
  const auto bitmap = std::uint64_t{4} * static_cast<std::uint64_t>(header.imageWidth) *
                      static_cast<std::uint64_t>(header.imageHeight);
  return zlibvideo::MemoryBound(header) + bitmap <= kBudget;
}

}  // namespace

int main() {
  // Key frames of 16 x 16 and of 4095 x 4095 pixels in blocks of 16 x 16.
  unsigned char messages[2][7] = {{0x13, 0x00, 16, 0x00, 16, 0, 0},
                                  {0x13, 0x0F, 0xFF, 0x0F, 0xFF, 0, 0}};
  StandInVideoObject video;
  auto* decoder = new ZLibVideoDecompressor(nullptr, nullptr);
  int decoded = 0;
  int refused = 0;
  for (unsigned char(&message)[7] : messages) {
    if (!IsAffordable(message, sizeof(message))) {
      ++refused;
    } else if (decoder->DecompressVideoEmbedded(video.Ref(), message, sizeof(message))) {
      ++decoded;
    }
  }
  decoder->DecRef();
  std::printf("%d decoded, %d refused\n", decoded, refused);
  return decoded == 1 && refused == 1 ? 0 : 2;
}
