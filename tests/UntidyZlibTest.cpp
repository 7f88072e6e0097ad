// Failures of zlib.

#include "tests/UntidyZlib.h"

#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using namespace formats;

struct UntidyZlibTest : DecoderTest {
  ~UntidyZlibTest() override { LinkedZlib() = {}; }
};

TEST_F(UntidyZlibTest, FailsMessagesWhoseStreamCannotBeginOrEnd) {
  const PlainPicture before(Header(6, 16, 16, 16, 16), 1);
  PlainPicture after(before.header, 2);
  const Bytes codes = ReduceColors(&after.blocks[0]);
  const Bytes &old = before.blocks[0], &pixels = after.blocks[0];
  Message direct = before.Whole();
  direct.palette = Zlib(PaletteColors());
  for (const auto& [record, shown] :
       {std::pair{Record{kIntermediate, {}, Zlib(pixels)}, after},
        {Record{kPrimed, {}, RawDeflate(pixels, old)}, after},
        {Record{kBanded, Band{0, 16}, Zlib(pixels)}, after},
        {Record{kIntermediate | kReduced, {}, Zlib(codes)}, after},
        {Record{kPrimed | kBanded, Band{5, 0}, RawDeflate(pixels, old)}, before}}) {
    const Bytes message = Message{.header = before.header, .records = {record}}.Build();
    const Bytes unchanged = Message{.header = before.header, .records = {{}}}.Build();
    SCOPED_TRACE(*record.format);
    Restart();
    ASSERT_TRUE(Decode(direct.Build()));
    LinkedZlib().failsToBegin = true;
    EXPECT_FALSE(Decode(message));
    EXPECT_TRUE(Decode(unchanged));
    EXPECT_TRUE(Shows(before.Bitmap()));
    LinkedZlib() = {.failsToEnd = true};
    EXPECT_FALSE(Decode(message));
    EXPECT_TRUE(Decode(unchanged));
    EXPECT_TRUE(Shows(shown.Bitmap()));
    LinkedZlib() = {};
  }
}

}  // namespace
}  // namespace zlibvideo
