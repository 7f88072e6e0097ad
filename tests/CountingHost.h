#ifndef ZLIBVIDEO_TESTS_COUNTINGHOST_H
#define ZLIBVIDEO_TESTS_COUNTINGHOST_H

#include <gtest/gtest.h>

#include <functional>
#include <unordered_map>

#include "decoder/ZLibVideoDecompressor.h"
#include "host/BitmapPixel.h"
#include "host/SBitmapCore.h"
#include "tests/GoodStream.h"

/// A second host, apart from the stand-in host: it counts what the component asks for, notes in
/// which order it asks, fails on demand, and lets no byte past the end of anything be touched.
namespace zlibvideo {

/// Memory between two inaccessible pages, ending where the second begins or, `atStart`, beginning
/// where the first ends, and a copy of `bytes` in such memory.
using HostBytes = std::unique_ptr<unsigned char, std::function<void(unsigned char*)>>;
HostBytes MakeGuarded(std::size_t size, unsigned char fill, bool atStart = false);
HostBytes MakeGuarded(const Bytes& bytes, bool atStart = false);

enum class AllocationFailure { kBadAlloc, kOtherException, kNull };

struct CountingHost {
  std::vector<std::pair<std::size_t, int>> allocations;  // size and option of each so far
  std::vector<std::string> calls;                        // of the other services, with arguments
  std::unordered_map<void*, HostBytes> live;
  std::size_t failAt = 0;  // the allocation to fail, counted from 1; 0 once it has
  bool forGood = false;    // `failAt` stays: all that follow fail as well
  AllocationFailure failure = AllocationFailure::kBadAlloc;
  bool throwOnRelease = false;
  bool throwOnUpdate = false;  // of the bitmap, once
  unsigned char fill = 0xA5;   // what new memory and new bitmaps hold
};

CountingHost& Host();  // the thread's own

/// Makes that allocation fail, counted from 1. All that follow as well if it is for good.
inline void FailAt(std::size_t allocation, AllocationFailure failure, bool forGood = false) {
  Host().failAt = allocation;
  Host().failure = failure;
  Host().forGood = forGood;
}

/// Keeps its pixels while the size asked for stays the same. Put away, it knows no row length.
class CountingBitmap : public SBitmapCore {
 public:
  void Realloc(int width, int height, EBitmapType type);
  void PutAway() { SetSurface(GetType(), nullptr, 0, GetWidth(), GetHeight()); }
  void DamageAField() { reinterpret_cast<unsigned char&>(fWidth) ^= 1; }
  BitmapPixels Pixels() const;

  int extra = 0;  // pixels more than asked for, to the right and below
  bool bottomUp = false;

 private:
  friend class SBitmapCore;
  int RowLength() const { return (bottomUp ? -kBitmapPixelBytes : kBitmapPixelBytes) * GetWidth(); }
  unsigned char* TopRow() const;
  HostBytes fPixels;
};

/// Has no bitmap before the host is first told its size.
struct CountingVideoObject : SObject {
  CountingVideoObject() { SetRecord(&record); }
  void SetRecord(RenderRecord* newRecord) { SetRenderRecord(newRecord, newRecord != nullptr); }
  CountingBitmap bitmap;
  bool getsABitmap = true;
  RenderRecord record;
};

/// Opens the decoder's own state to the tests.
struct DecoderProbe : ZLibVideoDecompressor {
  using BlockedCodec::fBlockHeight, BlockedCodec::fBlocks, BlockedCodec::fBlockWidth,
      BlockedCodec::fDecodeTable, BlockedCodec::fGridHeight, BlockedCodec::fGridWidth,
      BlockedCodec::fImageHeight, BlockedCodec::fImageWidth, BlockedCodec::fPalette,
      BlockedCodec::fScratchColorBuffer, BlockedCodec::fScratchColorBufferSize,
      VideoDecompressor::fDecodedFrameCount, VideoDecompressor::fGPUCodec,
      VideoDecompressor::fRefCount, VideoDecompressor::fReloadDisabled,
      VideoDecompressor::fReloadPending, VideoDecompressor::fVideoBuffer,
      VideoDecompressor::fVideoResourcesReleased, VideoDecompressor::fVideoTexture;
  using ZLibVideoDecompressor::ZLibVideoDecompressor;
};

/// What a block has, for comparisons.
inline std::span<const unsigned char> PreviousData(const BitmapDataBlock& block) {
  return {block.fPreviousData, static_cast<std::size_t>(block.fPreviousDataSize)};
}
inline std::span<const unsigned char> ConvertedData(const BitmapDataBlock& block) {
  return {block.fConvertedData, static_cast<std::size_t>(block.fConvertedDataSize)};
}

/// A decoder and a video object on this host, which must get everything back.
struct Player {
  Player() { Restart(); }
  ~Player() { Stop(); }

  void Stop() {
    decoder.reset();
    EXPECT_EQ(Host().live.size(), 0u);
    Host() = {};
  }

  void Restart() {
    Stop();
    decoder = std::make_unique<DecoderProbe>(nullptr, nullptr);
    video = std::make_unique<CountingVideoObject>();
  }

  bool Decode(const Bytes& message, bool skipPush = false) {
    const Vorn::GCAPI::GCRef<SObject> ref(video.get());
    return decoder->DecompressVideo(ref, MakeGuarded(message).get(), message.size(), skipPush);
  }

  testing::AssertionResult Shows(const BitmapPixels& expected) const {
    return SamePixels(expected, video->bitmap.Pixels());
  }

  std::unique_ptr<DecoderProbe> decoder;
  std::unique_ptr<CountingVideoObject> video;
};

struct DecoderTest : testing::Test, Player {};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_COUNTINGHOST_H
