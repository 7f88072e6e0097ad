// A zlib that leaves rubbish and fails: that it does, and what its failures leave.

#include "tests/UntidyZlib.h"

#include "tests/CountingHost.h"
#include "tests/ZlibProbe.h"

namespace zlibvideo {
namespace {

using namespace formats;

struct UntidyZlibTest : DecoderTest {
  ~UntidyZlibTest() override { LinkedZlib() = {}; }
};

TEST_F(UntidyZlibTest, LeavesRubbish) {
  EXPECT_FALSE(ZlibLeavesRoomAlone());  // uncompress, and inflate:
  PlainPicture picture(Header(6, 16, 16, 16, 16), 1);
  ASSERT_TRUE(Decode(picture.Whole().Build()));
  ASSERT_TRUE(Decode(
      Message{.header = picture.header, .records = {{kIntermediate, {}, Zlib(Bytes(767, 1))}}}
          .Build()));
  EXPECT_EQ(decoder->GetBlock(0, 0)->fRawData[767], UntidyZlib::kRubbish);
}

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
    EXPECT_TRUE(LinkedZlib().open.empty());
    EXPECT_TRUE(Decode(unchanged));
    EXPECT_TRUE(Shows(shown.Bitmap()));
    LinkedZlib() = {};
  }
}

}  // namespace
}  // namespace zlibvideo
