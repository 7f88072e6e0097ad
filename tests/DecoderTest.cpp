// The decoder as its host sees it: its operations, its life, and the header of a message.

#include "host/TCMessage.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using Calls = std::vector<std::string>;

/// Counts its destruction.
struct Counted : HostObject {
  explicit Counted(int* count) : destroyed(count) {}
  ~Counted() override { ++*destroyed; }
  int* destroyed;
};

TEST_F(DecoderTest, TestsAndReadsTheHeader) {
  struct Case {
    const char* name;
    Bytes header;
    std::array<int, 4> geometry = {0, 0, 64, 64};  // a new decoder's: the header is refused
  };
  for (const Case& c : {Case{"frame type 0", {0x03, 0x00, 0x10, 0x00, 0x10}},
                        Case{"no width", {0x13, 0x00, 0x00, 0x00, 0x10}},
                        Case{"no height", {0x13, 0x00, 0x10, 0xF0, 0x00}},
                        Case{"smallest blocks", {0x13, 0x00, 0x10, 0x00, 0x10}, {16, 16, 16, 16}},
                        Case{"12 bits", {0xF2, 0x11, 0x01, 0x20, 0x01}, {257, 1, 32, 48}},
                        Case{"no key frame", {0x23, 0xF0, 0x40, 0xF0, 0x30}, {64, 48, 256, 256}},
                        Case{"largest", {0x13, 0xFF, 0xFF, 0xFF, 0xFF}, {4095, 4095, 256, 256}}}) {
    SCOPED_TRACE(c.name);
    Restart();
    const bool isRefused = c.geometry[0] == 0;
    Bytes message = c.header;
    message.resize(5 + 2 * 256);
    EXPECT_EQ(Decode(message, true), !isRefused);
    const DecoderProbe& d = *decoder;
    EXPECT_EQ((std::array{d.fImageWidth, d.fImageHeight, d.fBlockWidth, d.fBlockHeight}),
              c.geometry);
    EXPECT_EQ(d.fDecodedFrameCount, isRefused ? 0u : 1u);
  }
}

TEST_F(DecoderTest, TestsTheLength) {
  Bytes message = {0x12, 0, 16, 0, 16, 0, 0};
  EXPECT_FALSE(decoder->DecompressVideoEmbedded({}, message.data(), -2147483647 - 1));
  EXPECT_FALSE(decoder->DecompressVideoEmbedded({}, message.data(), -1));
  // Of the last length, 3 bytes are decoded. If `unsigned long` has 32 bits, it is 3.
  for (const std::uint64_t length : {0ull, 6ull, 7ull, (1ull << 32) + 3}) {
    const auto given = static_cast<unsigned long>(length);
    Restart();
    EXPECT_EQ(decoder->DecompressVideo({}, message.data(), given, false), length == 7) << length;
    EXPECT_EQ(decoder->fImageWidth, given >= 7 ? 16 : 0) << length;
  }
  EXPECT_TRUE(decoder->DecompressVideoEmbedded({}, message.data(), 7));
}

TEST_F(DecoderTest, DecodesAMessageOfTheHost) {
  Bytes bytes = {0x12, 0, 16, 0, 16, 0, 251};  // 258 bytes, if all of the length counts
  bytes.resize(258);
  TCMessage message{bytes.data(), {0x00, 0x01, 0x02}};
  const Vorn::GCAPI::GCRef<SObject> ref(video.get());
  for (const auto& [unused, skipPush] :
       {std::pair{false, false}, {true, false}, {false, true}, {true, true}}) {
    Host().calls.clear();
    EXPECT_EQ(decoder->DecompressVideoMessage(ref, &message, unused, skipPush), 1);
    EXPECT_EQ(Host().calls.size(), skipPush ? 1u : 4u) << unused << ' ' << skipPush;
  }
  message.fPayloadLength[2] = 0x01;
  EXPECT_EQ(decoder->DecompressVideoMessage(ref, &message, false, false), 0);
}

TEST_F(DecoderTest, AnswersItsHost) {
  DecoderProbe& d = *decoder;
  for (const auto& [index, type] : {std::pair{0, 3}, {1, 6}, {2, -1}, {-1, -1}}) {
    EXPECT_EQ(d.VideoMessageCodecType(index), type) << index;
  }
  for (const auto& [first, length, isKey] :
       {std::tuple{0x13, 4, false}, {0x16, 5, true}, {0x26, 5, false}, {0x13, -5, false}}) {
    const HostBytes header = MakeGuarded(5, static_cast<unsigned char>(first));
    EXPECT_EQ(d.VideoEmbeddedIsKeyFrame({}, header.get(), length), isKey) << first << ' ' << length;
  }
  EXPECT_EQ(d.GetInstance(), nullptr);
  EXPECT_FALSE(d.CanDropDecode(nullptr));
  EXPECT_FALSE(d.NeedBufferingRestart(7));
  EXPECT_FALSE(d.GetCodecName(reinterpret_cast<QuarnString&>(d)));
  EXPECT_EQ((std::array{d.GetLowWater(), d.GetHighWater(), d.GetDPBSize(), d.GetDPBTime(),
                        d.GetTransformedPixelWidth(), d.GetTransformedPixelHeight()}),
            (std::array{0, 0, 0, 0, 0, 0}));
}

TEST_F(DecoderTest, ReloadsAndDeletesTextureAndBuffer) {
  DecoderProbe& d = *decoder;
  EXPECT_EQ((std::array{d.fReloadDisabled, d.fReloadPending}), (std::array{true, false}));
  d.DeleteVideoTexture();
  d.DeleteVideoBuffer();
  EXPECT_FALSE(d.fVideoResourcesReleased) << "there was nothing to delete";
  int gone = 0;
  for (const bool isTexture : {true, false}) {
    SCOPED_TRACE(isTexture ? "texture first" : "buffer first");
    d.fVideoTexture = new Counted(&gone);
    d.fVideoBuffer = new Counted(&gone);
    const auto reload = [&] {
      return isTexture ? d.ReloadVideoTexture({}) : d.ReloadIVideoBuffer({});
    };
    d.ReloadVideoBuffer({});
    d.fReloadDisabled = true;
    EXPECT_EQ(reload(), nullptr);
    EXPECT_TRUE(d.fReloadPending);
    d.fReloadDisabled = false;
    EXPECT_EQ(reload(), isTexture ? d.fVideoTexture : d.fVideoBuffer);
    EXPECT_FALSE(d.fReloadPending);
    d.fVideoResourcesReleased = false;
    isTexture ? d.DeleteVideoTexture() : d.DeleteVideoBuffer();
    EXPECT_FALSE(d.fVideoResourcesReleased);
    isTexture ? d.DeleteVideoBuffer() : d.DeleteVideoTexture();
    EXPECT_TRUE(d.fVideoResourcesReleased);
    EXPECT_TRUE(d.fVideoTexture == nullptr && d.fVideoBuffer == nullptr);
  }
  d.DeleteGPUCodec();
  d.fGPUCodec = new Counted(&gone);
  d.DeleteGPUCodec();
  EXPECT_EQ(d.fGPUCodec, nullptr);
  EXPECT_EQ(gone, 5);
}

TEST_F(DecoderTest, IsDestroyedThroughEitherBaseWithoutATrace) {
  for (const std::string how : {"BlockedCodec", "VideoDecompressor", "DecRef"}) {
    SCOPED_TRACE(how);
    Stop();
    auto* made = new DecoderProbe(reinterpret_cast<CorePlayer*>(this), nullptr);
    EXPECT_EQ(Host().allocations.size(), 1u);
    Bytes message = GoodStream()[2].message;
    EXPECT_TRUE(made->DecompressVideo({}, message.data(), message.size(), false));
    made->AddRef();
    made->DecRef();
    if (how == "BlockedCodec") delete static_cast<BlockedCodec*>(made);
    if (how == "VideoDecompressor") delete static_cast<VideoDecompressor*>(made);
    if (how == "DecRef") made->DecRef();
    // Blocks and buffers went before the host base, the object's own storage after it.
    EXPECT_EQ(Host().calls, (Calls{"Made 1 0", "Gone, allocations left: 1"}));
    EXPECT_EQ(Host().live.size(), 0u);
  }
}

TEST_F(DecoderTest, DrawsOnlyIntoAVideoObjectAndWhenAsked) {
  const PlainPicture picture(Header(3, 16, 32, 16, 16), 1);
  Bytes bytes = picture.Whole().Build();
  EXPECT_TRUE(decoder->DecompressVideo({}, bytes.data(), bytes.size(), false));
  EXPECT_TRUE(Decode(bytes, true));
  EXPECT_EQ(Host().calls, (Calls{"Made 0 0", "ReallocBitmap 16 32 0 0 5 0 0"}));
  const Vorn::GCAPI::GCRef<SObject> ref(video.get());
  EXPECT_TRUE(decoder->DecompressVideoEmbedded(ref, bytes.data(), static_cast<int>(bytes.size())));
  EXPECT_TRUE(Shows(picture.Bitmap()));
  EXPECT_EQ(decoder->fDecodedFrameCount, 3u);
  Host().throwOnUpdate = true;
  EXPECT_ANY_THROW(static_cast<void>(Decode(bytes)));
  EXPECT_EQ(decoder->fDecodedFrameCount, 3u) << "drawing failed";
  EXPECT_TRUE(Decode(bytes));
  EXPECT_EQ(decoder->fDecodedFrameCount, 4u);
  video->getsABitmap = false;
  EXPECT_TRUE(Decode(bytes));
  video->SetRecord(nullptr);
  EXPECT_TRUE(Decode(bytes));
  struct NewObject : SObject {
  } object;
  EXPECT_EQ(object.GetBitmapCore(), nullptr);
  video->SetRecord(reinterpret_cast<RenderRecord*>(16));  // nothing that could be read
  EXPECT_TRUE(Decode(bytes, true));
}

}  // namespace
}  // namespace zlibvideo
