// A host without memory, a host with many threads, and the most memory that a message costs.

#include <thread>

#include "bitstream/MemoryBound.h"
#include "grid/Sizes.h"
#include "host/SystemMemory.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using namespace formats;

using HostileTest = DecoderTest;

TEST_F(HostileTest, DecodesOnAfterEachBadAlloc) {
  const std::vector<Step> stream = GoodStream();
  bool thrown = true;
  for (std::size_t n = 2; thrown; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n);
    Restart();
    FailAt(n, AllocationFailure::kBadAlloc);
    thrown = false;
    for (const Step& step : stream) {
      try {
        ASSERT_TRUE(Decode(step.message));
      } catch (const std::bad_alloc&) {
        ASSERT_FALSE(std::exchange(thrown, true));
        ASSERT_TRUE(Decode(step.message));
      }
      ASSERT_TRUE(Shows(step.bitmap));
    }
  }
}

TEST_F(HostileTest, FailsTheMessagesThatGetNull) {
  const Record white{.payload = Zlib(Bytes(768, 0xFF))}, codes{kReduced, {}, Zlib(Bytes(256, 5))};
  const Message v1{.header = Header(3, 16, 16, 16, 16), .records = {white}};
  const Message v2{.header = Header(6, 16, 16, 16, 16), .records = {codes}};
  // Allocations: 1 decoder, 2 array of records, 3 record, then for version 1 pixels, for version 2
  // 4 scratch buffer, 5 colour table, 6 palette, 7 pixels, 8 converted data, 9 previous data. Table
  // and palette are made again when codes are converted. Only a later payload misses the codes.
  for (const auto& [message, last] : {std::pair{v1, 4ul}, {v2, 9ul}}) {
    for (std::size_t n = 2; n <= last; ++n) {
      SCOPED_TRACE(testing::Message() << n << " of " << last);
      Restart();
      FailAt(n, AllocationFailure::kNull);
      EXPECT_EQ(Decode(message.Build()), n == 5 || n == 6 || n == 8);
      EXPECT_TRUE(Decode(message.Build())) << "with memory again";
      const bool isGap = n == 3;  // its record is missing
      EXPECT_EQ(Host().allocations.size() == last, !isGap);
      EXPECT_TRUE(Shows({16, Bytes(1024, isGap ? 0xA5 : 0xFF)}));
    }
  }
}

TEST_F(HostileTest, PrimesWithPixelsAfterCodesWereLost) {
  const FrameHeader header = Header(6, 16, 16, 16, 16);
  PlainPicture first(header, 1), second(header, 2), third(header, 3);
  for (std::size_t i = 0; i < 768; ++i) first.blocks[0][i] = PaletteColors()[17 - i % 3];
  const Bytes codes(256, 5), more = ReduceColors(&second.blocks[0]);
  const Bytes last = ReduceColors(&third.blocks[0]);
  Message message{.header = header, .palette = Zlib(PaletteColors()), .records = {{}}};
  const auto decode = [&](int format, const Bytes& payload) {
    message.records[0] = {format, {}, payload};
    return Decode(message.Build());
  };
  for (const AllocationFailure failure : {AllocationFailure::kNull, AllocationFailure::kBadAlloc}) {
    const bool isNull = failure == AllocationFailure::kNull;
    SCOPED_TRACE(isNull ? "null" : "bad_alloc");
    Restart();
    EXPECT_TRUE(decode(kReduced, Zlib(codes)));
    FailAt(Host().allocations.size() + 1, failure);
    try {
      EXPECT_TRUE(decode(kReduced, Zlib(more)) && isNull);
    } catch (const std::bad_alloc&) {
      EXPECT_FALSE(isNull);
    }
    const PlainPicture& shown = isNull ? second : first;
    EXPECT_TRUE(Shows(shown.Bitmap()));
    EXPECT_TRUE(decode(kPrimed | kReduced, RawDeflate(last, shown.blocks[0])));
    EXPECT_TRUE(Shows(third.Bitmap()));
  }
}

TEST_F(HostileTest, KeepsAllForARepeatedMessageAndWhenFlushedInAnyOfEightThreads) {
  std::vector<std::jthread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([] {
      Player player;
      for (const Step& step : GoodStream()) {
        EXPECT_TRUE(player.decoder->Flush() && player.decoder->FlushAfterSeek());
        EXPECT_TRUE(player.Decode(step.message));
        const std::size_t before = Host().allocations.size();
        EXPECT_TRUE(player.Decode(step.message));
        EXPECT_EQ(Host().allocations.size(), before);
        EXPECT_TRUE(player.Shows(step.bitmap));
      }
    });
  }
}

TEST_F(HostileTest, CostsTheMemoryThatTheHeaderAllows) {
  for (const auto& [name, header, blocks] :
       {std::tuple{"version 1", Header(3, 20, 40, 16, 16), 6ul},
        {"version 2", Header(6, 20, 40, 32, 16), 3ul},
        {"one large block", Header(6, 1, 1, 256, 256), 1ul}}) {
    SCOPED_TRACE(name);
    Restart();
    // Zeros for all of the room or of the scratch buffer. They are too many codes to convert: the
    // room becomes previous data.
    const bool isV2 = header.codecType == kCodecTypeVersion2;
    const auto size = isV2 ? ScratchBufferSize(header.blockWidth, header.blockHeight)
                           : RawDataCapacity(header.blockWidth, header.blockHeight);
    const Record most{.format = isV2 ? std::optional(kReduced) : std::nullopt,
                      .payload = Zlib(Bytes(static_cast<std::size_t>(size)))};
    EXPECT_TRUE(Decode(Message{.header = header, .records{blocks, most}}.Build(), true));
    std::size_t records = 0, others = 0;
    for (const auto& [bytes, option] : Host().allocations) {
      (option == Vorn::kFixedMallocBlockRecord ? records : others) += bytes;
    }
    EXPECT_EQ(records, blocks * sizeof(BitmapDataBlock));
    const std::size_t used = records + others - sizeof(DecoderProbe);
    EXPECT_EQ(used, MemoryBound(header));
  }
  EXPECT_EQ(MemoryBound(Header(2, 40, 40, 16, 16)), MemoryBound(Header(3, 40, 40, 16, 16)));
}

using HostileDeathTest = DecoderTest;

TEST_F(HostileDeathTest, SignalsCountsThatAreTooLarge) {
  // No allocation before: it would throw.
  FailAt(2, AllocationFailure::kBadAlloc);
  EXPECT_DEATH(static_cast<void>(decoder->SetupCodec(32768, 16384, 1, 1)), "object too large");
  FailAt(2, AllocationFailure::kNull);
  EXPECT_FALSE(decoder->SetupCodec((1 << 29) - 1, 1, 1, 1));
  FailAt(2, AllocationFailure::kBadAlloc);
  decoder->fScratchColorBufferSize = -1;
  EXPECT_DEATH(decoder->CheckScratchColorBuffer(), "object too large");
}

TEST_F(HostileDeathTest, EndsTheProcessOnAnyOtherExceptionOfTheHeap) {
  const Bytes message = GoodStream()[2].message;
  for (std::size_t n = 2; n < 30; n += 3) {
    Restart();
    FailAt(n, AllocationFailure::kOtherException);
    EXPECT_DEATH(static_cast<void>(Decode(message)), "heap is broken") << n;
  }
  Restart();
  ASSERT_TRUE(Decode(message));
  EXPECT_DEATH(Host().throwOnRelease = true; decoder->DeleteBlocks(), "heap is broken");
  EXPECT_DEATH(Host().throwOnRelease = true; decoder.reset(), "heap is broken");
}

}  // namespace
}  // namespace zlibvideo
