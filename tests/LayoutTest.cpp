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
#define FIELD(member) \
  { #member, &BitmapDataBlock::member, 1 }

void ExpectSlots(std::size_t first, const std::vector<Place>& operations) {
  for (const Place& operation : operations) EXPECT_EQ(operation.at, first++) << operation.name;
}

void ExpectRising(std::size_t least, const std::vector<Place>& members) {
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
  constexpr std::size_t kBehindTable = sizeof(void*);
  // clang-format off
  ExpectRising(kBehindTable, {MEMBER(fVideoTexture), MEMBER(fVideoBuffer), MEMBER(fRefCount),
      MEMBER(fDecodedFrameCount), MEMBER(fReloadPending), MEMBER(fReloadDisabled),
      MEMBER(fVideoResourcesReleased), MEMBER(fGPUCodec)});
  ExpectRising(kBehindTable, {MEMBER(fDecodeTable), MEMBER(fPalette), MEMBER(fScratchColorBuffer),
      MEMBER(fScratchColorBufferSize), MEMBER(fImageWidth), MEMBER(fImageHeight),
      MEMBER(fGridWidth), MEMBER(fGridHeight), MEMBER(fBlockWidth), MEMBER(fBlockHeight),
      MEMBER(fBlocks)});
  ExpectRising(0, {FIELD(fRawData), FIELD(fRawDataSize), FIELD(fRawDataCapacity),
      FIELD(fPreviousData), FIELD(fPreviousDataSize), FIELD(fPreviousDataCapacity),
      FIELD(fConvertedData), FIELD(fConvertedDataSize), FIELD(fConvertedDataCapacity),
      FIELD(fHeight), FIELD(fWidth), FIELD(fImageOffset), FIELD(fImageStride), FIELD(fFormat),
      FIELD(fDiffRowStart), FIELD(fDiffRowCount), FIELD(fProcessed), FIELD(fDrawn),
      FIELD(fFilled)});
  // clang-format on
  static_assert(sizeof(ZLibVideoDecompressor) == sizeof(VideoDecompressor) + sizeof(BlockedCodec));
}

}  // namespace
}  // namespace zlibvideo
