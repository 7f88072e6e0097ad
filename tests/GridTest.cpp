// Geometry of the grid, life of its buffers, and its composition into the host's bitmap.

#include <csignal>

#include "grid/Sizes.h"
#include "host/SRECT.h"
#include "output/RowWidener.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using GridTest = DecoderTest;

TEST_F(GridTest, SizesBuffersByTheBlock) {
  // clang-format off
  for (const auto& [width, height, scratch, room] :
       {std::array{16, 16, 1024, 848}, {16, 32, 1648, 1648}, {32, 32, 3248, 3248},
        {48, 48, 7248, 7248}, {64, 64, 12832, 12832}, {80, 80, 20032, 20032}, {256, 256, 204528, 204528},
        {1, 1, 1024, 256}}) {
    // clang-format on
    SCOPED_TRACE(testing::Message() << width << 'x' << height);
    EXPECT_TRUE(decoder->SetupCodec(100, 100, width, height));
    EXPECT_EQ(decoder->fScratchColorBufferSize, scratch);
    EXPECT_EQ(RawDataCapacity(width, height), room);
  }
}

TEST_F(GridTest, CutsTheLastColumnAndRowToThePicture) {
  ASSERT_TRUE(decoder->SetupCodec(100, 100, 64, 64));
  // Width, height, offset and stride of each block.
  const std::array<int, 4> expected[] = {
      {64, 64, 0, 300}, {36, 64, 192, 300}, {64, 36, 19200, 300}, {36, 36, 19392, 300}};
  for (std::size_t i = 0; i < 4; ++i) {
    const BitmapDataBlock& b = *decoder->fBlocks[i];
    EXPECT_EQ((std::array{b.fWidth, b.fHeight, b.fImageOffset, b.fImageStride}), expected[i]) << i;
  }
}

TEST_F(GridTest, ServesOtherCodecs) {
  unsigned int length = 9;
  EXPECT_FALSE(BlockedCodec().DecompressBlock(nullptr, &length, nullptr, 9));
  EXPECT_EQ(length, 9u);
  EXPECT_EQ(BlockedCodec::CalcBlockSize(511), 64);
  EXPECT_EQ(BlockedCodec::CalcBlockSize(512), 128);
  char sizes[] = "......";
  decoder->WriteToBuf2(sizes, 3, 0x7FFF0000 + 300);
  EXPECT_STREQ(sizes, "...\x01\x2C.");
}

TEST_F(GridTest, IsKeptUntilTheGeometryChanges) {
  DecoderProbe& d = *decoder;
  d.MakeTarvishDecodeTable();
  d.MakeTarvishPalette(nullptr);
  ASSERT_TRUE(d.SetupCodec(40, 24, 16, 16));
  const auto tables = std::pair(d.fDecodeTable, d.fPalette);
  std::array now{40, 24, 16, 16};
  for (const std::size_t changed : {4ul, 0ul, 1ul, 2ul, 3ul, 4ul}) {
    SCOPED_TRACE(changed);
    const bool keeps = changed == now.size();
    if (!keeps) now[changed] += 16;
    d.CheckScratchColorBuffer();
    ASSERT_TRUE(d.GetBlock(0, 0)->SetRawData(nullptr, 10));
    const unsigned char* scratch = d.fScratchColorBuffer;
    EXPECT_TRUE(d.SetupCodec(now[0], now[1], now[2], now[3]));
    EXPECT_EQ(d.GetBlock(0, 0)->fRawData != nullptr, keeps);
    EXPECT_EQ(d.fScratchColorBuffer, keeps ? scratch : nullptr);
  }
  EXPECT_EQ(std::pair(d.fDecodeTable, d.fPalette), tables);
}

TEST_F(GridTest, IsNotThereWithoutAPicture) {
  for (const char* call : {"first", "second"}) {
    EXPECT_FALSE(decoder->SetupCodec(0, 25, 32, 32)) << call;
    EXPECT_EQ(decoder->fBlocks, nullptr) << call;
  }
  decoder->ClearProcessedFlags();
}

TEST_F(GridTest, BuffersOnlyGrow) {
  const Bytes data = Noise(300, 1);
  BitmapDataBlock b;
  struct Buffer {
    bool exists = true;
    int size = 0, capacity = 0;
    bool isNew = false;
  };
  const auto set = [&](const char* name, const unsigned char* source, int size, Buffer expected) {
    SCOPED_TRACE(name);
    const std::size_t allocations = Host().allocations.size();
    EXPECT_EQ(b.SetPreviousData(source, size), expected.exists);
    EXPECT_EQ(b.fPreviousData != nullptr, expected.exists);
    EXPECT_EQ(b.fPreviousDataCapacity, expected.capacity);
    EXPECT_EQ(Host().allocations.size() != allocations, expected.isNew);
    EXPECT_TRUE(SameBytes(Slice(data, 0, expected.size), PreviousData(b)));
  };
  set("empty, no buffer", data.data(), 0, {.exists = false});
  set("below 0, no buffer", data.data(), -1, {.exists = false, .capacity = -1});
  set("first", data.data(), 200, {.size = 200, .capacity = 200, .isNew = true});
  set("less", data.data(), 100, {.size = 100, .capacity = 200});
  set("empty", data.data(), 0, {.capacity = 200});
  set("more", data.data(), 300, {.size = 300, .capacity = 300, .isNew = true});
  set("room only", nullptr, 250, {.capacity = 300});
  for (const AllocationFailure failure : {AllocationFailure::kNull, AllocationFailure::kBadAlloc}) {
    EXPECT_TRUE(b.SetPreviousData(data.data(), 200));
    FailAt(Host().allocations.size() + 1, failure);
    try {
      EXPECT_FALSE(b.SetPreviousData(data.data(), 301));
    } catch (const std::bad_alloc&) {
    }
    EXPECT_EQ(b.fPreviousData, nullptr);
    EXPECT_EQ(b.fPreviousDataSize, 0);
  }
}

TEST_F(GridTest, DecodesOnWhenPartlyBuilt) {
  for (std::size_t missing = 0; missing < 4; ++missing) {
    SCOPED_TRACE(missing);
    Restart();
    // Allocations: decoder, array of records, records. The area of a missing block stays white.
    FailAt(3 + missing, AllocationFailure::kNull);
    Host().fill = 0xFF;
    PlainPicture picture(Header(6, 20, 20, 16, 16), 1);
    const Bytes message = picture.Whole().Build();
    EXPECT_FALSE(Decode(message));
    EXPECT_TRUE(Decode(message, true));
    EXPECT_FALSE(decoder->IsComplete());
    // Blocks 0 and 1 lie below row 4 of the bitmap.
    EXPECT_EQ(decoder->PushChanges(&video->bitmap).yMin, missing == 1 || missing == 2 ? 4 : 0);
    for (std::size_t i = missing; i < 4; ++i) picture.blocks[i].assign(768, 0xFF);
    EXPECT_TRUE(Shows(picture.Bitmap()));
    EXPECT_TRUE(Decode(message));
    EXPECT_TRUE(Shows(picture.Bitmap()));
  }
}

TEST_F(GridTest, ComposesEverySmallPicture) {
  for (int i = 0; i < 2 * 33 * 33; ++i) {
    const int width = i / 2 % 33 + 1, height = i / 66 + 1, version = i % 3 == 0 ? 3 : 6;
    const PlainPicture picture(Header(version, width, height, i % 2 == 0 ? 16 : 32, 16), 7);
    ASSERT_TRUE(Decode(picture.Whole().Build()));
    ASSERT_TRUE(Shows(picture.Bitmap())) << width << " x " << height;
  }
}

TEST_F(GridTest, WritesThePictureAndNothingElse) {
  PlainPicture picture(Header(3, 100, 70, 64, 64), 1);
  Message message = picture.Whole();
  message.records[1] = {};  // no pixels yet: black
  picture.blocks[1].assign(picture.blocks[1].size(), 0);
  const Bytes shown = picture.Bitmap().bytes;
  BitmapPixels expected{103, Bytes(103 * 73 * 4, 0xA5)};
  for (std::ptrdiff_t row = 0; row < 70; ++row) {
    const auto from = shown.begin() + row * 400;
    std::copy(from, from + 400, expected.bytes.begin() + row * 412);
  }
  for (const bool bottomUp : {false, true}) {
    SCOPED_TRACE(bottomUp ? "bottom up" : "top down");
    Restart();
    video->bitmap.extra = 3;
    video->bitmap.bottomUp = bottomUp;
    video->bitmap.Realloc(100, 70, kBitmapVideoFrame);
    video->bitmap.PutAway();
    EXPECT_TRUE(Decode(message.Build()));
    const std::vector<std::string> calls = {
        "Made 0 0", "ReallocBitmap 100 70 0 0 5 0 0", "LockBits 1",
        "Restore",  "UpdateMipMap 0 103 0 73",        "UnlockBits"};
    EXPECT_EQ(Host().calls, calls);
    EXPECT_TRUE(Shows(expected));
  }
}

TEST_F(GridTest, WritesNothingWithoutAGridOrAnAddress) {
  const std::vector<std::string> lent = {"LockBits 1", "UpdateMipMap 0 2 0 2", "UnlockBits"};
  for (const bool isAddressable : {true, false}) {
    SCOPED_TRACE(isAddressable ? "no grid" : "no address");
    Restart();
    EXPECT_TRUE(decoder->SetupCodec(2, 2, 16, 16));
    if (isAddressable) decoder->DeleteBlocks();
    video->bitmap.Realloc(2, 2, isAddressable ? kBitmapVideoFrame : kBitmapNotAddressable);
    video->bitmap.PutAway();
    Host().calls.clear();
    decoder->PushFrame(&video->bitmap);
    EXPECT_EQ(Host().calls, isAddressable ? lent : std::vector<std::string>{});
    EXPECT_EQ(video->bitmap.GetBMBaseAddr() != nullptr, isAddressable);
    EXPECT_TRUE(Shows({2, Bytes(16, 0xA5)}));
  }
}

struct Rows : SBitmapCore {
  Rows(unsigned char* base, int length) { SetSurface(kBitmapVideoFrame, base, length, 130, 16); }
};

using GridDeathTest = DecoderTest;

TEST_F(GridDeathTest, AsksForAddressAndRowLengthOfEveryRow) {
  // The first row drawn overwrites fields of the bitmap itself: its base address at the first
  // offset, its row length at the second. The check words of the field then stop the next question.
  constexpr int kRow = 1024;
  Bytes memory(17 * kRow);
  const Bytes pixels = Noise(768, 1);
  const testing::KilledBySignal isStopped(SIGABRT);
  EXPECT_TRUE(decoder->SetupCodec(16, 16, 16, 16));
  for (const std::ptrdiff_t offset : {32, -32}) {
    SCOPED_TRACE(offset);
    unsigned char* base = memory.data() + kRow;
    auto* bitmap = new (base + 15 * kRow + offset) Rows(base, kRow);
    for (const NamedRowWidener& variant : AvailableRowWideners()) {
      EXPECT_EXIT(variant.widen(pixels.data(), {bitmap, 15, 0}, 16, 16), isStopped, "");
    }
    EXPECT_EXIT(decoder->PushFrame(bitmap), isStopped, "") << "black";
  }
}

#ifndef NDEBUG
TEST_F(GridDeathTest, StopsAtABitmapThatIsTooSmall) {
  EXPECT_TRUE(Decode(PlainPicture(Header(3, 16, 16, 16, 16), 1).Whole().Build()));
  EXPECT_TRUE(decoder->SetupCodec(16, 17, 16, 16));
  EXPECT_DEATH(decoder->PushFrame(&video->bitmap), "the host's bitmap is too small");
}
#endif

TEST(WidenRowTest, NamesTheSlowestVariantFirst) {
  std::string names;
  for (const NamedRowWidener& variant : AvailableRowWideners()) names += variant.name;
  EXPECT_TRUE(names == "portableNEON" || std::string("portableSSSE3AVX2").starts_with(names));
}

TEST(WidenRowTest, EveryVariantWritesItsRowsAndNothingElse) {
  constexpr unsigned int kGuard = 32;
  for (const NamedRowWidener& variant : AvailableRowWideners()) {
    for (unsigned int i = 0; i < 131 * 16; ++i) {
      const unsigned int pixels = i / 16, shift = i % 16, rows = i % 7;
      const Bytes colors = Noise(rows * pixels * 3, i);
      Bytes target(kGuard + 6 * 600, 0xEE), expected = target;
      for (unsigned int byte = 0; byte < rows * pixels * 4; ++byte) {
        const unsigned int row = rows - 1 - byte / (pixels * 4), at = byte % (pixels * 4);
        expected[kGuard + row * 600 + shift + at] =
            at % 4 == 3 ? 255 : colors[byte / 4 * 3 + at % 4];
      }
      Rows bitmap(target.data() + kGuard + shift, 600);
      const auto width = static_cast<int>(pixels), count = static_cast<int>(rows);
      const HostBytes source = MakeGuarded(colors, i % 2 == 0);
      variant.widen(source.get(), {&bitmap, count - 1, 0}, count, width);
      ASSERT_TRUE(SameBytes(expected, target)) << variant.name << ' ' << pixels << ' ' << shift;
    }
  }
}

}  // namespace
}  // namespace zlibvideo
