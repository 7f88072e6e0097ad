#ifndef ZLIBVIDEO_TESTS_COUNTINGHOST_H
#define ZLIBVIDEO_TESTS_COUNTINGHOST_H

#include <gtest/gtest.h>

#include <functional>
#include <span>
#include <unordered_map>

#include "decoder/ZLibVideoDecompressor.h"
#include "host/BitmapPixel.h"
#include "host/SBitmapCore.h"
#include "tests/GoodStream.h"

/// A host that counts allocations, notes the order of all other calls, fails on demand, and stops
/// the process at an access beyond the end of its memory.
namespace zlibvideo {

/// Memory between two inaccessible pages. It ends where the second begins or, `atStart`, begins
/// where the first ends.
using HostBytes = std::unique_ptr<unsigned char, std::function<void(unsigned char*)>>;
HostBytes MakeGuarded(std::size_t size, unsigned char fill, bool atStart = false);
/// A copy of `bytes` in such memory.
HostBytes MakeGuarded(const Bytes& bytes, bool atStart = false);

enum class AllocationFailure { kBadAlloc, kOtherException, kNull };

struct CountingHost {
  std::vector<std::pair<std::size_t, int>> allocations;  // size and option of each so far
  std::vector<std::string> calls;                        // of the other services, with arguments
  std::unordered_map<void*, HostBytes> live;
  std::size_t failAt = 0;  // number of the allocation that fails, from 1; 0 afterwards
  AllocationFailure failure = AllocationFailure::kBadAlloc;
  bool throwOnRelease = false;
  bool throwOnUpdate = false;  // of the bitmap, once
  unsigned char fill = 0xA5;   // content of new memory and new bitmaps
};

CountingHost& Host();  // the thread's own

/// Makes that allocation fail, counted from 1.
inline void FailAt(std::size_t allocation, AllocationFailure failure) {
  Host().failAt = allocation;
  Host().failure = failure;
}

/// Keeps its pixels while its size stays the same. Put away, it knows no row length.
class CountingBitmap : public SBitmapCore {
 public:
  void Realloc(int width, int height, EBitmapType type);
  void PutAway() { SetSurface(GetType(), nullptr, 0, GetWidth(), GetHeight()); }
  BitmapPixels Pixels() const;

  int extra = 0;  // pixels more than asked for, to the right and below
  bool bottomUp = false;

 private:
  friend class SBitmapCore;
  int RowLength() const { return (bottomUp ? -kBitmapPixelBytes : kBitmapPixelBytes) * GetWidth(); }
  unsigned char* TopRow() const;
  HostBytes fPixels;
};

/// Has no bitmap before the first `ReallocBitmap`.
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

inline std::span<const unsigned char> PreviousData(const BitmapDataBlock& block) {
  return {block.fPreviousData, static_cast<std::size_t>(block.fPreviousDataSize)};
}
inline std::span<const unsigned char> ConvertedData(const BitmapDataBlock& block) {
  return {block.fConvertedData, static_cast<std::size_t>(block.fConvertedDataSize)};
}

/// A decoder and a video object on this host, which must get all its memory back.
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
