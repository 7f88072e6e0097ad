// What the host sees of the decoder: its queries, its life, and the tests of a message's header.

#include "host/TCMessage.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using Calls = std::vector<std::string>;

TEST_F(DecoderTest, TestsAndReadsTheHeader) {
  using Case = std::tuple<Bytes, std::array<int, 4>>;
  constexpr std::array kNothing{0, 0, 64, 64};
  for (const auto& [header, geometry] :
       {Case{{0x03, 0x00, 0x10, 0x00, 0x10}, kNothing},  // frame type 0, no width, no height
        Case{{0x13, 0x00, 0x00, 0x00, 0x10}, kNothing},
        Case{{0x13, 0x00, 0x10, 0xF0, 0x00}, kNothing},
        Case{{0x13, 0x00, 0x10, 0x00, 0x10}, {16, 16, 16, 16}},
        Case{{0xF2, 0x11, 0x01, 0x20, 0x01}, {257, 1, 32, 48}},
        Case{{0x23, 0xF0, 0x40, 0xF0, 0x30}, {64, 48, 256, 256}},
        Case{{0x13, 0xFF, 0xFF, 0xFF, 0xFF}, {4095, 4095, 256, 256}}}) {
    Restart();
    Bytes message = header;
    message.resize(5 + 2 * 256);
    EXPECT_EQ(Decode(message, true), geometry != kNothing);
    const DecoderProbe& d = *decoder;
    EXPECT_EQ((std::array{d.fImageWidth, d.fImageHeight, d.fBlockWidth, d.fBlockHeight}), geometry);
    EXPECT_EQ(d.fDecodedFrameCount, geometry != kNothing ? 1u : 0u);
  }
}

TEST_F(DecoderTest, TestsTheLength) {
  Bytes message = {0x12, 0, 16, 0, 16, 0, 0};
  EXPECT_FALSE(decoder->DecompressVideoEmbedded({}, message.data(), -2147483647 - 1));
  EXPECT_FALSE(decoder->DecompressVideoEmbedded({}, message.data(), -1));
  for (const unsigned long length : {0ul, 6ul, 0xFFFFFFFFul + 7, 7ul}) {
    EXPECT_EQ(decoder->DecompressVideo({}, message.data(), length, false), length == 7) << length;
    EXPECT_EQ(decoder->fImageWidth, length == 7 ? 16 : 0) << length;
  }
  EXPECT_TRUE(decoder->DecompressVideoEmbedded({}, message.data(), 7));
  message[6] = 251;  // 258 bytes, if all of the length counts
  message.resize(258);
  TCMessage host{message.data(), {0x00, 0x01, 0x02}};
  EXPECT_EQ(decoder->DecompressVideoMessage({}, &host, false, false), 1);
  host.fPayloadLength[2] = 0x01;
  EXPECT_EQ(decoder->DecompressVideoMessage({}, &host, false, false), 0);
}

TEST_F(DecoderTest, AnswersQueries) {
  DecoderProbe& d = *decoder;
  for (const auto& [index, type] : {std::pair{0, 3}, {1, 6}, {2, -1}, {-1, -1}}) {
    EXPECT_EQ(d.VideoMessageCodecType(index), type);
  }
  for (const auto& [first, length, isKey] :
       {std::tuple{0x13, 4, false}, {0x16, 5, true}, {0x26, 5, false}, {0x13, -5, false}}) {
    const HostBytes header = MakeGuarded(5, static_cast<unsigned char>(first));
    EXPECT_EQ(d.VideoEmbeddedIsKeyFrame({}, header.get(), length), isKey) << first;
  }
  EXPECT_TRUE(d.Flush() && d.FlushAfterSeek() && d.GetInstance() == nullptr);
  EXPECT_FALSE(d.CanDropDecode(nullptr) || d.NeedBufferingRestart(7) || d.GetLowWater() ||
               d.GetHighWater() || d.GetDPBSize() || d.GetDPBTime() ||
               d.GetTransformedPixelWidth() || d.GetTransformedPixelHeight() ||
               d.GetCodecName(reinterpret_cast<QuarnString&>(d)));
}

TEST_F(DecoderTest, ManagesHostObjects) {
  struct Counted : HostObject {
    explicit Counted(int* count) : destroyed(count) {}
    ~Counted() override { ++*destroyed; }
    int* destroyed;
  };
  int gone = 0;
  DecoderProbe& d = *decoder;
  EXPECT_TRUE(d.fReloadDisabled && !d.fReloadPending);
  d.DeleteVideoTexture(), d.DeleteVideoBuffer(), d.DeleteGPUCodec(), d.ReloadReferenceFrames();
  for (const bool texture : {true, false}) {
    EXPECT_FALSE(d.fVideoResourcesReleased);
    d.fVideoTexture = new Counted(&gone), d.fVideoBuffer = new Counted(&gone);
    d.ReloadVideoBuffer({});
    EXPECT_FALSE(d.ReloadVideoTexture({}) || d.ReloadIVideoBuffer({}) || !d.fReloadPending);
    d.fReloadDisabled = false;
    EXPECT_EQ(texture ? d.ReloadVideoTexture({}) : d.ReloadIVideoBuffer({}),
              texture ? d.fVideoTexture : d.fVideoBuffer);
    texture ? d.DeleteVideoTexture() : d.DeleteVideoBuffer();
    EXPECT_FALSE(d.fVideoResourcesReleased || d.fReloadPending);
    texture ? d.DeleteVideoBuffer() : d.DeleteVideoTexture();
    EXPECT_TRUE(d.fVideoResourcesReleased && !d.fVideoTexture && !d.fVideoBuffer);
    d.fReloadDisabled = true, d.fVideoResourcesReleased = false;
  }
  d.fGPUCodec = new Counted(&gone);
  d.DeleteGPUCodec();
  EXPECT_TRUE(d.fGPUCodec == nullptr && gone == 5);
}

TEST_F(DecoderTest, IsDestroyedThroughEitherBaseWithoutATrace) {
  for (const int how : {0, 1, 2}) {
    Stop();
    auto* made = new DecoderProbe(reinterpret_cast<CorePlayer*>(this), nullptr);
    EXPECT_EQ(Host().allocations.size(), 1u);
    Bytes message = GoodStream()[2].message;
    EXPECT_TRUE(made->DecompressVideo({}, message.data(), message.size(), false));
    made->AddRef(), made->DecRef();
    if (how == 0) delete static_cast<BlockedCodec*>(made);
    if (how == 1) delete static_cast<VideoDecompressor*>(made);
    if (how == 2) made->DecRef();
    // Blocks and buffers went before the host base, the object's own storage after it.
    EXPECT_EQ(Host().calls, (Calls{"Made 1 0", "Gone, allocations left: 1"}));
    EXPECT_EQ(Host().live.size(), 0u);
  }
}

TEST_F(DecoderTest, DrawsOnlyWhatWasDecodedAndAskedFor) {
  PlainPicture picture(Header(3, 16, 32, 16, 16), 1);
  Bytes bytes = picture.Whole().Build();
  EXPECT_TRUE(decoder->DecompressVideo({}, bytes.data(), bytes.size(), false));
  EXPECT_TRUE(Decode(bytes, true));
  EXPECT_EQ(Host().calls, (Calls{"Made 0 0", "ReallocBitmap 16 32 0 0 5 0 0"}));
  EXPECT_TRUE(Decode(bytes));
  Message bad{.header = picture.header, .records = {{.payload = Zlib(picture.blocks[1])}, {}}};
  bad.records[1].payload = {1, 2};
  EXPECT_FALSE(Decode(bad.Build()));
  EXPECT_TRUE(Host().calls.size() == 6 && decoder->fDecodedFrameCount == 3);
  EXPECT_TRUE(Shows(picture.Bitmap()));
  // The block before the bad one keeps its new pixels.
  bad.records = {{}, {.payload = Zlib(picture.blocks[0])}};
  EXPECT_TRUE(Decode(bad.Build()));
  std::swap(picture.blocks[0], picture.blocks[1]);
  EXPECT_TRUE(Shows(picture.Bitmap()));
  video->record.fBitmap = nullptr;  // a video object without a bitmap, and one without a record
  EXPECT_TRUE(Decode(bytes));
  video->RemoveRecord();
  EXPECT_TRUE(Decode(bytes));
}

}  // namespace
}  // namespace zlibvideo
