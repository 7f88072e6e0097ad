// The order of virtual operations, which a host that was compiled apart relies on.

#include <cstring>

#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

struct Slot {
  /// A pointer to a virtual operation holds its slot, by the C++ ABI of GCC and Clang.
  template <typename Pointer>
  Slot(const char* operation, Pointer pointer) : name(operation) {
    std::memcpy(&offset, &pointer, sizeof(offset));
  }
  const char* name;
  std::size_t offset = 0;
};

TEST(LayoutTest, VirtualOperationsStandInOrder) {
#define SLOT(operation) \
  { #operation, &ZLibVideoDecompressor::operation }
  // clang-format off
  const Slot slots[] = {SLOT(VideoMessageCodecType), SLOT(DecompressVideoMessage),
      SLOT(DecompressVideoEmbedded), SLOT(VideoEmbeddedIsKeyFrame), SLOT(CanDropDecode),
      SLOT(GetInstance), SLOT(FlushAfterSeek), SLOT(Flush), SLOT(DeleteBuffers),
      SLOT(ReallocBuffers), SLOT(AddRef), SLOT(DecRef), SLOT(GetLowWater), SLOT(GetHighWater),
      SLOT(GetDPBSize), SLOT(GetDPBTime), SLOT(NeedBufferingRestart), SLOT(ReloadVideoTexture),
      SLOT(ReloadIVideoBuffer), SLOT(ReloadVideoBuffer), SLOT(DeleteVideoTexture),
      SLOT(DeleteVideoBuffer), SLOT(ReloadReferenceFrames), SLOT(DeleteHWCodec), SLOT(GetCodecName),
      SLOT(GetTransformedPixelWidth), SLOT(GetTransformedPixelHeight), SLOT(DeleteGPUCodec),
      SLOT(DecompressBlock)};
  // clang-format on
  std::size_t place = 2;  // behind the destructors
  for (const Slot& slot : slots) EXPECT_EQ(slot.offset / sizeof(void*), place++) << slot.name;
  EXPECT_EQ(Slot("", &BlockedCodec::DecompressBlock).offset / sizeof(void*), 0u);
  static_assert(sizeof(ZLibVideoDecompressor) == sizeof(VideoDecompressor) + sizeof(BlockedCodec));
}

}  // namespace
}  // namespace zlibvideo
