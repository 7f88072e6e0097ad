// Message bodies, palettes and colours.

#include <set>

#include "bench/PlainConvert.h"
#include "colour/RunConverter.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using namespace formats;

class BlockTest : public DecoderTest {
 protected:
  int Unpack(const Message& message) {
    const FrameHeader& h = message.header;
    const HostBytes bytes = MakeGuarded(message.Build());
    EXPECT_TRUE(decoder->SetupCodec(h.imageWidth, h.imageHeight, h.blockWidth, h.blockHeight));
    return decoder->UnpackMessage(bytes.get(), static_cast<unsigned int>(message.Build().size()),
                                  static_cast<char>(h.codecType), 0);
  }

  static Message V1(const std::vector<Record>& records, const Bytes& rest = {}) {
    return {.header = Header(3, 32, 32, 16, 16), .records = records, .rest = rest};
  }
  static Message V2(const std::vector<Record>& records, unsigned int flags = 0,
                    const Bytes& rest = {}, const std::optional<Bytes>& palette = {}) {
    return {Header(6, 16, 16, 16, 16), flags, palette, records, rest};
  }

  const Bytes zeros = Zlib(Bytes(768));
  const int z = static_cast<int>(zeros.size());
  const Record plain{.payload = zeros}, direct{.format = kDirect, .payload = zeros}, none{},
      cut{.claimedSize = 1};
};

TEST_F(BlockTest, CountsWhatABodyConsumes) {
  const Record tooLong{.payload = Zlib(Bytes(849))}, damaged{.payload = Damaged(zeros)};
  const Record noBand{.format = kBanded}, halfABand{.format = kBanded, .payload = {1}};
  struct Case {
    const char* name;
    Message message;
    int consumed;
    int firstBlock;  // bytes of its pixels
  };
  const Case cases[] = {
      {"empty", V1({none, none, none, none}), 8, 0},
      {"rest", V1({plain, none, none, none}, Bytes(10)), 8 + z, 768},
      {"cut record", V1({none, none, none, cut}), -1, 0},
      {"too long", V1({tooLong, none, none, none}), -1, 0},
      {"damaged", V1({damaged, none, none, none}), -1, 0},
      {"type 2", {.header = Header(2, 16, 16, 16, 16), .records = {plain}}, 2 + z, 0},
      {"empty, version 2", V2({none}), 2, 0},
      {"unread flags, rest", V2({direct}, 0xFC, {0}), 3 + z, 768},
      {"no band", V2({noBand}), -1, 0},
      {"half a band", V2({halfABand}), -1, 0},
      {"one pass", V2({direct}, kFlagSecondPass), 3 + z, 768},
      {"two passes", V2({none, direct}, kFlagSecondPass), 5 + z, 768},
      {"second pass cut", V2({direct, cut}, kFlagSecondPass), -1, 768},
      {"first pass cut", V2({cut}, kFlagSecondPass), -1, 0},
      // Its two bytes count, and the record is read behind them.
      {"palette does not fit", V2({{.claimedSize = 9}}, kFlagPalette, {0, 0}), 4, 0},
      {"empty palette", V2({direct}, 0, {}, Bytes{}), 5 + z, 768}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Restart();
    EXPECT_EQ(Unpack(c.message), c.consumed);
    EXPECT_EQ(decoder->GetBlock(0, 0)->fRawDataSize, c.firstBlock);
  }
}

TEST_F(BlockTest, InstallsOnlyAWholePalette) {
  const Bytes colors = Zlib(PaletteColors());
  Bytes many = PaletteColors();
  many.push_back(0);
  for (const auto& [name, palette] : {std::pair{"whole", colors},
                                      {"damaged", Damaged(colors)},
                                      {"a byte short", Zlib(Slice(many, 0, 383))},
                                      {"a byte long", Zlib(many)}}) {
    const auto size = static_cast<int>(palette.size());
    Restart();
    EXPECT_EQ(Unpack(V2({direct}, 0, {}, palette)), 5 + size + z) << name;
    EXPECT_EQ(decoder->fPalette[1], palette == colors ? 0x0102FEu : 0x333333u) << name;
  }
}

TEST_F(BlockTest, KeepsHeaderBytesUntilTheNextRecordThatHasAny) {
  // There is no reference data for the band.
  EXPECT_EQ(Unpack(V2({{kBanded | kUnreadBits, Band{1, 2}}})), -1);
  decoder->fDecodeTable[9] = 8;
  EXPECT_EQ(Unpack(V2({none})), 2);
  const BitmapDataBlock& b = *decoder->GetBlock(0, 0);
  const auto header = [&b] { return std::tuple(b.fFormat, b.fDiffRowStart, b.fDiffRowCount); };
  EXPECT_EQ(header(), std::tuple(kBanded | kUnreadBits, 1, 2));
  EXPECT_EQ(Unpack(V2({direct})), 3 + z);
  EXPECT_EQ(header(), std::tuple(0, 0, 0));
  EXPECT_EQ(decoder->fDecodeTable[9], 8u) << "the colour table is kept, too";
}

TEST_F(BlockTest, WalksRecordsThatItHasNoUseFor) {
  EXPECT_EQ(Unpack(V2({none})), 2);
  const HostBytes records = MakeGuarded({0, 1, kIntermediate, 0, 0, 0, 0, 0});
  decoder->GetBlock(0, 0)->fProcessed = true;
  EXPECT_EQ(decoder->UnpackBlocks(records.get(), 8, 6), 3) << "decoded in this pass";
  decoder->DeleteBlocks();
  decoder->ClearProcessedFlags();
  EXPECT_EQ(decoder->UnpackBlocks(records.get(), 8, 6), 3) << "no grid";
  decoder->fGridHeight = 0;
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 8, 3, 0), 0) << "no rows";
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 8, 6, 0), -1) << "no rows, version 2";
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 5, 6, 0), -1) << "no flags";
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 4, 3, 0), -1) << "no header";
  EXPECT_EQ(decoder->UnpackPalette(records.get(), 1), -1) << "half a size";
  ByteCursor cursor(records.get(), 4);
  FrameHeader header;
  EXPECT_FALSE(FrameHeader::Read(&cursor, &header));
  EXPECT_EQ(cursor.Remaining(), 4u);
  BlockRecord record{9, {1, 2, 3}, cursor.Rest()};
  cursor = ByteCursor(records.get() + 1, 2);
  EXPECT_FALSE(BlockRecord::Read(&cursor, 6, &record));
  EXPECT_TRUE(record.IsEmpty());
}

TEST_F(BlockTest, FailsWhenCutAnywhere) {
  const Bytes version1 = PlainPicture(Header(3, 20, 20, 16, 16), 1).Whole().Build();
  Message message = PlainPicture(Header(6, 20, 20, 16, 16), 1).Whole();
  message.palette = Zlib(PaletteColors());
  message.flags = kFlagSecondPass;
  const std::size_t onePass = message.Build().size();
  message.records.resize(8, Record{.format = kPrimed, .payload = {3, 0}});
  for (const Bytes& bytes : {version1, message.Build()}) {
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
      Restart();
      const bool isWhole = length == bytes.size() || (bytes != version1 && length == onePass);
      ASSERT_EQ(Decode(Slice(bytes, 0, static_cast<std::ptrdiff_t>(length))), isWhole) << length;
      ASSERT_EQ(Host().calls.size() > 1, isWhole) << length;
    }
  }
}

TEST_F(BlockTest, TellsWhatADamagedStreamGave) {
  const HostBytes room = MakeGuarded(848, 0), stream = MakeGuarded(Damaged(zeros));
  unsigned int length = 848, size = static_cast<unsigned int>(z);
  EXPECT_FALSE(decoder->DecompressBlock(room.get(), &length, stream.get(), size));
  EXPECT_EQ(length, 768u);
}

TEST_F(BlockTest, RejectsCodesWithoutMemoryForTableOrPalette) {
  for (const std::size_t missing : {2ul, 3ul}) {
    SCOPED_TRACE(missing == 2 ? "table" : "palette");
    Restart();
    FailAt(missing, AllocationFailure::kNull);
    Bytes target(9, 0xEE), source = {5, 0x80, 0};
    unsigned int length = 9;
    decoder->ConvertImageColorToQuarn24(target.data(), &length, source.data(), 3, kReduced);
    EXPECT_EQ(std::pair(length, target), std::pair(9u, Bytes(9, 0xEE)));
  }
}

TEST_F(BlockTest, WidensEvery15BitColour) {
  decoder->MakeTarvishDecodeTable();
  for (unsigned int i = 0; i < 32768; ++i) {
    ASSERT_EQ(decoder->fDecodeTable[i], i / 1024 << 19 | i / 32 % 32 << 11 | i % 32 << 3) << i;
  }
}

/// By turns runs of colours, of different indices, and of the same index. Converters take up to 16
/// codes at once.
Bytes RandomCodes(unsigned int length, unsigned int start) {
  constexpr unsigned int kRuns[] = {1, 2, 3, 8, 15, 16, 17, 32, 33, 40};
  const unsigned int run = kRuns[start % std::size(kRuns)];
  Bytes codes = Noise(length, start);
  for (unsigned int i = 0; i < length; ++i) {
    const unsigned int kind = i / run % 3;
    if (kind == 0 && i % run % 2 == 0) codes[i] |= 0x80;
    if (kind == 1) codes[i] &= 0x7F;
    if (kind == 2) codes[i] = 5;
  }
  return codes;
}

TEST_F(BlockTest, ConvertsLikeThePlainLoopIntoAllSmallRooms) {
  constexpr unsigned int kGuard = 64;
  const std::uint32_t* palette = BlockedCodec::fDefaultTarvishPalette;
  const std::uint32_t* colors = bench::PlainColorTable();
  for (unsigned int length = 0; length < 180; ++length) {
    for (unsigned int room = length * 3 / 2; room < length * 3 + 9; ++room) {
      SCOPED_TRACE(testing::Message() << length << " bytes into " << room);
      Bytes codes = RandomCodes(length, length + room), target(room + kGuard, 0xEE),
            expected = target;
      const unsigned int size =
          bench::PlainConvert(codes.data(), length, expected.data(), room, palette, colors);
      unsigned int produced = room;
      decoder->ConvertImageColorToQuarn24(target.data(), &produced, codes.data(), length, kReduced);
      ASSERT_EQ(produced, size);
      ASSERT_TRUE(SameBytes(expected, target));
      for (const NamedRunConverter& variant : AvailableRunConverters()) {
        target.assign(room + kGuard, 0xEE);
        const RestOfStream rest = variant.convert(
            {codes.data(), codes.data() + length, target.data(), target.data() + room}, palette,
            colors);
        bench::PlainConvert(rest.source, static_cast<unsigned int>(rest.sourceEnd - rest.source),
                            rest.target, static_cast<unsigned int>(rest.targetEnd - rest.target),
                            palette, colors);
        ASSERT_TRUE(SameBytes(expected, target)) << variant.name;
      }
    }
  }
}

TEST_F(BlockTest, BeginsWithTheDefaultPalette) {
  // No colour twice, all parts on a coarse scale, and some of the colours by name.
  decoder->MakeTarvishPalette(nullptr);
  const std::uint32_t* palette = decoder->fPalette;
  EXPECT_EQ(std::set<std::uint32_t>(palette, palette + 128).size(), 128u);
  for (unsigned int i = 0; i < 384; ++i) {
    EXPECT_EQ((palette[i / 3] >> i % 3 * 8 & 0xFF) % (i < 360 ? 0x33 : 0x11), 0u) << i / 3;
  }
  for (const auto& [index, color] : {std::pair{7, 0x660000u}, {64, 0x993399u}, {99, 0x006633u}}) {
    EXPECT_EQ(palette[index], color) << index;
  }
}

}  // namespace
}  // namespace zlibvideo
