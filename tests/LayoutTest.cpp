// The order of virtual operations and members, which a host that was compiled apart relies on.

#include <cstring>

#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

/// A virtual operation with its slot, or a member with its offset, as a pointer to it holds them by
/// the C++ ABI of GCC and Clang.
struct Place {
  template <typename Pointer>
  Place(const char* placed, Pointer pointer, std::size_t unit) : name(placed) {
    std::memcpy(&at, &pointer, sizeof(at));
    at /= unit;
  }
  const char* name;
  std::size_t at = 0;
};

#define SLOT(operation) \
  { #operation, &ZLibVideoDecompressor::operation, sizeof(void*) }
#define MEMBER(member) \
  { #member, &DecoderProbe::member, 1 }

void ExpectSlots(std::size_t first, const std::vector<Place>& operations) {
  for (const Place& operation : operations) EXPECT_EQ(operation.at, first++) << operation.name;
}

void ExpectRising(const std::vector<Place>& members) {
  std::size_t least = sizeof(void*);  // after the pointer to the table, if there is one
  for (const Place& member : members) {
    EXPECT_GE(member.at, least) << member.name;
    least = member.at + 1;
  }
}

TEST(LayoutTest, VirtualOperationsStandInOrder) {
  constexpr std::size_t kBehindDestructors = 2;
  // clang-format off
  ExpectSlots(kBehindDestructors, {SLOT(VideoMessageCodecType), SLOT(DecompressVideoMessage),
      SLOT(DecompressVideoEmbedded), SLOT(VideoEmbeddedIsKeyFrame), SLOT(CanDropDecode),
      SLOT(GetInstance), SLOT(FlushAfterSeek), SLOT(Flush), SLOT(DeleteBuffers),
      SLOT(ReallocBuffers), SLOT(AddRef), SLOT(DecRef), SLOT(GetLowWater), SLOT(GetHighWater),
      SLOT(GetDPBSize), SLOT(GetDPBTime), SLOT(NeedBufferingRestart), SLOT(ReloadVideoTexture),
      SLOT(ReloadIVideoBuffer), SLOT(ReloadVideoBuffer), SLOT(DeleteVideoTexture),
      SLOT(DeleteVideoBuffer), SLOT(ReloadReferenceFrames), SLOT(DeleteHWCodec), SLOT(GetCodecName),
      SLOT(GetTransformedPixelWidth), SLOT(GetTransformedPixelHeight), SLOT(DeleteGPUCodec),
      SLOT(DecompressBlock)});
  // clang-format on
  ExpectSlots(0, {{"DecompressBlock", &BlockedCodec::DecompressBlock, sizeof(void*)}});
}

TEST(LayoutTest, MembersStandInOrder) {
  // clang-format off
  ExpectRising({MEMBER(fVideoTexture), MEMBER(fVideoBuffer), MEMBER(fRefCount),
      MEMBER(fDecodedFrameCount), MEMBER(fReloadPending), MEMBER(fReloadDisabled),
      MEMBER(fVideoResourcesReleased), MEMBER(fGPUCodec)});
  ExpectRising({MEMBER(fDecodeTable), MEMBER(fPalette), MEMBER(fScratchColorBuffer),
      MEMBER(fScratchColorBufferSize), MEMBER(fImageWidth), MEMBER(fImageHeight),
      MEMBER(fGridWidth), MEMBER(fGridHeight), MEMBER(fBlockWidth), MEMBER(fBlockHeight),
      MEMBER(fBlocks)});
#define OFFSET(member) offsetof(BitmapDataBlock, member)
  constexpr std::size_t kOffsets[] = {OFFSET(fRawData), OFFSET(fRawDataSize),
      OFFSET(fRawDataCapacity), OFFSET(fPreviousData), OFFSET(fPreviousDataSize),
      OFFSET(fPreviousDataCapacity), OFFSET(fConvertedData), OFFSET(fConvertedDataSize),
      OFFSET(fConvertedDataCapacity), OFFSET(fHeight), OFFSET(fWidth), OFFSET(fImageOffset),
      OFFSET(fImageStride), OFFSET(fFormat), OFFSET(fDiffRowStart), OFFSET(fDiffRowCount),
      OFFSET(fProcessed), OFFSET(fDrawn), OFFSET(fFilled)};
  // clang-format on
  static_assert(std::ranges::is_sorted(kOffsets) && kOffsets[0] == 0);
}

TEST(LayoutTest, TheDecoderIsItsTwoBasesAndNothingElse) {
  static_assert(sizeof(ZLibVideoDecompressor) == sizeof(VideoDecompressor) + sizeof(BlockedCodec));
  const Player player;
  const void* const decoder = player.decoder.get();
  EXPECT_EQ(static_cast<VideoDecompressor*>(player.decoder.get()), decoder);
}

}  // namespace
}  // namespace zlibvideo
