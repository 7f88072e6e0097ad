// Decoding of message bodies, payloads and colours: what each leaves in the blocks.

#include <set>

#include "bitstream/RowBand.h"
#include "tests/CountingHost.h"
#include "tests/ZlibProbe.h"

namespace zlibvideo {
namespace {

using namespace formats;

Bytes Damaged(Bytes bytes) {
  bytes.back() ^= 1;
  return bytes;
}

Bytes Slice(const Bytes& bytes, std::ptrdiff_t from, std::ptrdiff_t to) {
  return Bytes(bytes.begin() + from, bytes.begin() + to);
}

/// A version-2 payload and what decoding it does to a block of 16 rows of 48 bytes.
struct PayloadCase {
  const char* name;
  int format;
  Band band;
  Bytes payload;
  bool decodes;
  int length;                                            // 0: the block does not count as decoded
  std::vector<std::pair<std::ptrdiff_t, Bytes>> writes;  // one over the other
  std::optional<Bytes> previous, converted = {};
  Bytes stream = {};  // what becomes the converted data
  Bytes left = {};    // under the writes, where zlib leaves the room behind its output alone
};

/// A name, a body, the bytes of it that count, and those that the first block of the grid has then.
using BodyCase = std::tuple<const char*, Message, int, int>;

class BlockTest : public DecoderTest {
 protected:
  int Unpack(const Message& message) {
    const FrameHeader& h = message.header;
    const HostBytes bytes = MakeGuarded(message.Build());
    EXPECT_TRUE(decoder->SetupCodec(h.imageWidth, h.imageHeight, h.blockWidth, h.blockHeight));
    return decoder->UnpackMessage(bytes.get(), static_cast<unsigned int>(message.Build().size()),
                                  static_cast<char>(h.codecType), 0);
  }

  /// Unpacks each body as a decoder's first.
  void CheckBodies(const std::vector<BodyCase>& cases) {
    for (const auto& [name, message, result, rawDataSize] : cases) {
      SCOPED_TRACE(name);
      Restart();
      EXPECT_EQ(Unpack(message), result);
      EXPECT_EQ(decoder->GetBlock(0, 0)->fRawDataSize, rawDataSize);
    }
  }

  static Message V1(const std::vector<Record>& records, const Bytes& rest = {}) {
    return {.header = Header(3, 32, 32, 16, 16), .records = records, .rest = rest};
  }
  static Message V2(const std::vector<Record>& records, unsigned int flags = 0,
                    const Bytes& rest = {}, const std::optional<Bytes>& palette = {}) {
    return {Header(6, 16, 16, 16, 16), flags, palette, records, rest};
  }

  void CheckPayload(const PayloadCase& c);

  const Bytes zeros = Zlib(Bytes(768));
  const int z = static_cast<int>(zeros.size());
  const Record plain{.payload = zeros}, direct{.format = kDirect, .payload = zeros}, none{},
      cut{.claimedSize = 1};
};

/// Decodes the payload and looks at all that it may change.
void BlockTest::CheckPayload(const PayloadCase& c) {
  SCOPED_TRACE(c.name);
  Restart();
  ASSERT_TRUE(decoder->SetupCodec(16, 16, 16, 16));
  decoder->CheckScratchColorBuffer();
  BitmapDataBlock& b = *decoder->GetBlock(0, 0);
  Bytes raw(848, 0xA5);
  const auto give = [&](auto set, const std::optional<Bytes>& data) {
    const int size = data ? static_cast<int>(data->size()) : 0;
    return !data || ((b.*set)(raw.data(), 1) && (b.*set)(data->data(), size));
  };
  ASSERT_TRUE(b.SetRawData(nullptr, 848));
  ASSERT_TRUE(give(&BitmapDataBlock::SetPreviousData, c.previous));
  ASSERT_TRUE(give(&BitmapDataBlock::SetConvertedData, c.converted));
  b.fFormat = static_cast<std::uint8_t>(c.format);
  b.fDiffRowStart = static_cast<std::uint8_t>(c.band.start);
  b.fDiffRowCount = static_cast<std::uint8_t>(c.band.rows);
  const HostBytes payload = MakeGuarded(c.payload);
  const auto size = static_cast<unsigned int>(c.payload.size());
  unsigned int length = 848;
  EXPECT_EQ(decoder->UnpackOneV2Block(&b, 0, payload.get(), size, nullptr, &length), c.decodes);
  EXPECT_EQ(length, c.length == 0 ? 848u : static_cast<unsigned int>(c.length));
  EXPECT_EQ(std::pair(b.fRawDataSize, b.fProcessed), std::pair(c.length, c.length != 0));
  std::copy(c.left.begin(), c.left.end(), raw.begin());
  // Anywhere else only the writes are looked at: what lies between them is up to zlib.
  if (!ZlibLeavesRoomAlone()) raw.assign(b.fRawData, b.fRawData + 848);
  for (const auto& [at, bytes] : c.writes) std::copy(bytes.begin(), bytes.end(), raw.begin() + at);
  const bool isDirect = (c.format & (kPrimed | kIntermediate | kBanded)) == 0;
  if (c.decodes || !isDirect) {
    EXPECT_TRUE(SameBytes(raw, std::span(b.fRawData, 848), {16, 3}));
  }
  EXPECT_TRUE(
      SameBytes(isDirect && c.length != 0 ? Slice(raw, 0, c.length) : c.previous.value_or(Bytes{}),
                PreviousData(b)));
  EXPECT_TRUE(
      SameBytes(c.stream.empty() ? c.converted.value_or(Bytes{}) : c.stream, ConvertedData(b)));
}

TEST_F(BlockTest, CountsWhatABodyConsumes) {
  const Record tooLong{.payload = Zlib(Bytes(849))}, damaged{.payload = Damaged(zeros)};
  const Record noBand{.format = kBanded}, halfABand{.format = kBanded, .payload = {1}};
  CheckBodies({{"empty", V1({none, none, none, none}), 8, 0},
               {"rest", V1({plain, none, none, none}, Bytes(10)), 8 + z, 768},
               {"half a size", V1({plain, none, none}, {0}), -1, 768},
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
               {"no palette size", V2({}, kFlagPalette), -1, 0},
               {"half a palette size", V2({}, kFlagPalette, {0}), -1, 0},
               // Its two bytes count, and the record is read behind them.
               {"palette does not fit", V2({{.claimedSize = 9}}, kFlagPalette, {0, 0}), 4, 0},
               {"empty palette", V2({direct}, 0, {}, Bytes{}), 5 + z, 768}});
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
    CheckBodies({{name, V2({direct}, 0, {}, palette), 5 + size + z, 768}});
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

TEST_F(BlockTest, DecodesEveryKindOfVersion2Payload) {
  // A block of 16 rows of 48 bytes in a room of 848; the band leaves 144 bytes before it and 528
  // after. P is previous data, C converted data, both with the codes in them.
  constexpr Band kBand{3, 2};
  const Bytes codes = {0x0A, 0x05, 0xFF, 0xFF}, bgr = {0, 0, 255, 255, 255, 255, 248, 248, 248};
  Bytes P = Noise(768, 1), C = Noise(60, 3);
  std::copy(codes.begin(), codes.end(), P.begin());
  std::copy(codes.begin(), codes.end(), C.begin() + 9);
  Bytes turned = P;
  std::rotate(turned.begin(), turned.begin() + 100, turned.end());
  const Bytes pixels = Noise(768, 2), tooLong = Noise(900, 4), room = Slice(tooLong, 0, 848);
  const Bytes rows = Slice(P, 400, 496), row = Slice(rows, 0, 48), black(848);
  const Bytes most(565, 5), oneMore(566, 5), head = Slice(P, 0, 144), tail = Slice(P, 240, 768);
  Bytes uncheckedRows = Zlib(rows);
  uncheckedRows.resize(uncheckedRows.size() - 4);
  // clang-format off
  const PayloadCase cases[] = {
      {"direct", kUnreadBits, {}, Zlib(pixels), true, 768, {{0, pixels}}, P, C},
      {"short", kDirect, {}, Zlib(rows), true, 96, {{0, rows}}, {}},
      {"without pixels", kDirect, {}, Zlib({}), true, 0, {}, P},
      {"empty", kDirect, {}, {}, true, 848, {}, P},
      {"damaged", kDirect, {}, Damaged(Zlib(pixels)), false, 0, {}, P},
      {"too long", kDirect, {}, Zlib(tooLong), false, 0, {}, P},
      {"reduced", kReduced | kUnreadBits, {}, Zlib(codes), true, 9, {{0, bgr}}, P, C, codes},
      {"most codes", kReduced, {}, Zlib(most), true, 846, {{0, Bytes(846, 255)}}, P, C, most},
      {"too many codes", kReduced, {}, Zlib(oneMore), true, 848, {}, P, C, oneMore},
      {"codes damaged", kReduced, {}, Damaged(Zlib(codes)), false, 0, {}, P, C},
      {"codes empty", kReduced, {}, {}, true, 848, {}, P, C, Bytes(1024, 0xA5)},
      {"colour field 1", kColorField1, {}, Zlib(codes), true, 848, {}, P, C, codes},
      {"colour field 3", kColorField3, {}, Zlib(codes), true, 848, {}, {}, {}, codes},
      {"no reference", kIntermediate, {}, Zlib(pixels), false, 0, {}, {}},
      {"no reference, empty", kPrimed, {}, {}, false, 0, {}, {}},
      {"no reference, no rows", kBanded, {}, {}, false, 0, {}, {}, C},
      {"intermediate", kIntermediate, kBand, Zlib(pixels), true, 768, {{0, pixels}}, P, C},
      {"fills the room", kIntermediate, {}, Zlib(tooLong), true, 848, {{0, room}}, P},
      {"bad check value", kIntermediate, {}, Damaged(Zlib(pixels)), true, 768, {{0, black}}, P},
      {"gzip", kIntermediate, {}, Compress(pixels, {}, MAX_WBITS + 16), true, 0, {{0, black}}, P},
      {"preset dictionary", kIntermediate, {}, Zlib(pixels, P), true, 0, {{0, black}}, P},
      {"cut off", kIntermediate, {}, uncheckedRows, true, 96, {{0, rows}}, P},
      {"primed", kPrimed, {}, RawDeflate(turned, P), true, 768, {{0, turned}}, P, C},
      {"primed, short", kPrimed, {}, RawDeflate(rows, P), true, 96, {{0, rows}}, P, {}, {}, P},
      {"primed, damaged", kPrimed, {}, {7}, true, 0, {{0, black}}, P},
      {"primed, empty", kPrimed, {}, {}, true, 848, {}, Bytes{}},
      {"empty dictionary", kPrimed, {}, RawDeflate(pixels), false, 0, {}, Bytes{}},
      {"by codes", kPrimed | kReduced, {}, RawDeflate(codes, C), true, 9, {{0, C}, {0, bgr}}, P, C},
      {"without codes", kPrimed | kReduced, {}, RawDeflate(codes, P), true, 9, {{0, P}, {0, bgr}},
       P},
      {"empty codes", kPrimed | kReduced, {}, RawDeflate(codes), false, 0, {}, P, Bytes{}},
      {"codes beyond the room", kPrimed | kReduced, {}, codes, true, 9, {{0, room}, {0, bgr}}, P,
       tooLong},
      {"primed, field 1", kPrimed | kColorField1, {}, RawDeflate(codes, P), true, 848, {{0, P}}, P},
      {"intermediate, field 3", kIntermediate | kColorField3, {}, Zlib(codes), true, 848, {}, P},
      {"reduced, bad check", kIntermediate | kReduced, {}, Damaged(Zlib(codes)), true, 9,
       {{0, bgr}}, P, C},
      {"reduced, no stream", kIntermediate | kReduced, {}, {0xFF}, true, 0, {}, P},
      {"band", kBanded, kBand, Zlib(rows), true, 768, {{0, P}, {144, rows}}, P, C},
      {"primed band", kPrimed | kBanded, kBand, RawDeflate(rows, P), true, 768,
       {{0, P}, {144, rows}}, P, C},
      {"half a band", kBanded, kBand, Zlib(row), true, 720, {{0, head}, {144, row}, {240, tail}},
       P},
      {"more than a band", kBanded, kBand, Zlib(pixels), true, 848,
       {{0, P}, {144, Slice(pixels, 0, 176)}}, P},
      {"bad band", kBanded, kBand, Damaged(Zlib(rows)), true, 768, {{0, P}, {144, Bytes(176)}}, P},
      {"band without a payload", kBanded, kBand, {}, true, 848, {{0, head}, {240, tail}}, P},
      {"first rows", kBanded, {0, 2}, Zlib(rows), true, 768, {{0, P}, {0, rows}}, P},
      {"last rows", kBanded, {14, 2}, Zlib(rows), true, 768, {{0, P}, {672, rows}}, P},
      {"beyond the block", kBanded, {15, 2}, Zlib(rows), false, 0, {}, Noise(848, 5)},
      {"beyond the reference", kBanded, {14, 2}, Zlib(rows), false, 0, {}, Slice(P, 0, 767)},
      {"no reference after it", kBanded, kBand, Zlib(rows), false, 0, {}, Slice(P, 0, 767)},
      {"reference too long", kBanded, {5, 0}, {}, false, 0, {}, Noise(849, 5)},
      {"band of codes", kBanded | kReduced, kBand, Zlib(codes), true, 681,
       {{0, head}, {144, bgr}, {240, tail}}, P},
      {"more codes than a band", kBanded | kReduced, kBand, Zlib(Bytes(40, 5)), true, 792,
       {{0, P}, {144, Bytes(120, 255)}}, P},
      {"band, field 1", kBanded | kColorField1, kBand, Zlib(codes), true, 848,
       {{0, head}, {240, tail}}, P},
      {"no rows", kBanded, {5, 0}, {}, true, 768, {{0, P}}, P},
      {"no rows, payload", kBanded, {5, 0}, Zlib(pixels), true, 768, {{0, P}}, P},
      {"no rows, primed", kPrimed | kBanded, {5, 0}, RawDeflate(rows, P), true, 768, {{0, P}}, P},
      {"no rows, short", kBanded | kReduced, {5, 0}, Zlib(codes), true, 96, {{0, rows}}, rows}};
  // clang-format on
  for (const PayloadCase& c : cases) CheckPayload(c);
}

TEST_F(BlockTest, TestsBandsOneByOne) {
  constexpr int kWide = 20'000'000;  // rows that leave 32 bits
  for (const auto& [name, width, start, rows, previous, found] :
       {std::tuple{"no rows", kWide, 72, 0, 9, true},
        {"whole", 16, 0, 16, 848, true},
        {"end past 32 bits", kWide, 70, 2, 9, false},
        {"block past 32 bits", kWide, 0, 1, 9, false},
        {"reference past the room", 16, 0, 1, 849, false},
        {"end past the block", 16, 15, 2, 848, false},
        {"end past the reference", 16, 14, 2, 767, false},
        {"reference short of the block", 16, 14, 1, 767, false}}) {
    BitmapDataBlock b;
    b.Initialize(0, width, width == kWide ? 90 : 16, width, false);
    b.fPreviousDataSize = previous;
    const BlockHeader header = {kFormatDiffRows, static_cast<std::uint8_t>(start),
                                static_cast<std::uint8_t>(rows)};
    RowBand band = {1, 2, 3};
    EXPECT_EQ(RowBand::Find(b, header, 848, &band), found) << name;
    const auto length = static_cast<unsigned int>(rows * 48);
    EXPECT_EQ(std::tuple(band.offset, band.length, band.after),
              found ? std::tuple(0u, length, 0u) : std::tuple(1u, 2u, 3u))
        << name;
  }
}

TEST_F(BlockTest, PrimesWithLargeBlocks) {
  // The dictionary is one, two or four stored blocks; payloads go on with pixels that repeat from
  // so far back that they need nearly all of the history.
  Bytes all;
  while (all.size() < 2 * 256 * 256 * 3) Append(&all, Noise(32'000, 1));
  const Bytes codes = {0x0A, 0x05, 0xFF, 0xFF}, bgr = {0, 0, 255, 255, 255, 255, 248, 248, 248};
  for (const auto& [size, start] : {std::pair{112, 10}, {160, 0}, {256, 251}}) {
    SCOPED_TRACE(size);
    const int bytes = size * size * 3;
    const Bytes pixels = Slice(all, 0, bytes), next = Slice(all, bytes, 2 * bytes);
    const Bytes rows = Slice(next, 0, size * 3 * 5);
    Bytes banded = pixels, coded = pixels;
    std::copy(rows.begin(), rows.end(), banded.begin() + size * 3 * start);
    std::copy(bgr.begin(), bgr.end(), coded.begin());
    const FrameHeader header = Header(6, size, size, size, size);
    EXPECT_GT(Unpack({.header = header, .records = {{kDirect, {}, Zlib(pixels)}}}), 0);
    const BitmapDataBlock& b = *decoder->GetBlock(0, 0);
    // What codes leave of the block shows the dictionary as it landed.
    for (const auto& [name, record, expected] :
         {std::tuple{"whole", Record{kPrimed, {}, RawDeflate(next, pixels)}, next},
          {"band", Record{kPrimed | kBanded, Band{start, 5}, RawDeflate(rows, pixels)}, banded},
          {"codes", Record{kPrimed | kReduced, {}, RawDeflate(codes, pixels)}, coded}}) {
      SCOPED_TRACE(name);
      EXPECT_LT(record.payload.size(), 2000u) << "is to find its pixels in the dictionary";
      EXPECT_GT(Unpack({.header = header, .records = {record}}), 0);
      EXPECT_TRUE(SameBytes(expected, std::span(b.fRawData, expected.size()), {size, 3}));
      EXPECT_EQ(b.fRawDataSize, record.format == (kPrimed | kReduced) ? 9 : bytes);
      EXPECT_TRUE(SameBytes(pixels, PreviousData(b), {size, 3}));
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
    FailAt(missing, AllocationFailure::kNull, true);
    const HostBytes target = MakeGuarded(9, 0xEE), source = MakeGuarded({5, 0x80, 0});
    unsigned int length = 9;
    decoder->ConvertImageColorToQuarn24(target.get(), &length, source.get(), 3, kReduced);
    EXPECT_EQ(length, 9u);
    EXPECT_TRUE(SameBytes(Bytes(9, 0xEE), std::span(target.get(), 9)));
  }
}

TEST_F(BlockTest, WidensEvery15BitColour) {
  decoder->MakeTarvishDecodeTable();
  for (unsigned int i = 0; i < 32768; ++i) {
    ASSERT_EQ(decoder->fDecodeTable[i], i / 1024 << 19 | i / 32 % 32 << 11 | i % 32 << 3) << i;
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
