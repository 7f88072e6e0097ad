// Decoding of message bodies, payloads and colours: what each leaves in the blocks.

#include <set>

#include "bitstream/RowBand.h"
#include "tests/CountingHost.h"
#include "tests/ZlibProbe.h"

namespace zlibvideo {
namespace {

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

class BlockTest : public DecoderTest {
 protected:
  int Unpack(const Message& message) {
    const FrameHeader& h = message.header;
    const HostBytes bytes = MakeGuarded(message.Build());
    EXPECT_TRUE(decoder->SetupCodec(h.imageWidth, h.imageHeight, h.blockWidth, h.blockHeight));
    return decoder->UnpackMessage(bytes.get(), static_cast<unsigned int>(message.Build().size()),
                                  static_cast<char>(h.codecType), 0);
  }

  /// Decodes the payload and looks at all that it may change.
  void CheckPayload(const PayloadCase& c);
};

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
  EXPECT_TRUE(b.SetRawData(nullptr, 848) && give(&BitmapDataBlock::SetPreviousData, c.previous) &&
              give(&BitmapDataBlock::SetConvertedData, c.converted));
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
  if (!ZlibLeavesRoomAlone()) raw.assign(b.fRawData, b.fRawData + 848);
  for (const auto& [at, bytes] : c.writes) std::copy(bytes.begin(), bytes.end(), raw.begin() + at);
  const bool direct = (c.format & 0x07) == 0;
  if (c.decodes || !direct) {
    EXPECT_TRUE(SameBytes(raw, std::span(b.fRawData, 848), {16, 3}));
  }
  EXPECT_TRUE(
      SameBytes(direct && c.length != 0 ? Slice(raw, 0, c.length) : c.previous.value_or(Bytes{}),
                PreviousData(b)));
  EXPECT_TRUE(
      SameBytes(c.stream.empty() ? c.converted.value_or(Bytes{}) : c.stream, ConvertedData(b)));
}

TEST_F(BlockTest, CountsWhatABodyConsumes) {
  const FrameHeader v1 = Header(3, 32, 32, 16, 16), v2 = Header(6, 16, 16, 16, 16);
  const Bytes zeros = Zlib(Bytes(768)), colors = Zlib(PaletteColors()), damaged = Damaged(colors);
  Bytes many = PaletteColors();
  many.push_back(0);
  const Bytes few = Zlib(Slice(many, 0, 383));
  many = Zlib(many);
  const Record plain{.payload = zeros}, direct{.format = 0, .payload = zeros}, none{},
      cut{.claimedSize = 1};
  const auto z = static_cast<int>(zeros.size()), c = static_cast<int>(colors.size());
  const auto f = static_cast<int>(few.size()), m = static_cast<int>(many.size());
  // clang-format off
  const struct {
    Message message;
    int result, rawDataSize;
  } cases[] = {
      {{.header = v1, .records = {none, none, none, none}}, 8, 0},
      {{.header = v1, .records = {plain, none, none, none}, .rest = Bytes(10)}, 8 + z, 768},
      {{.header = v1, .records = {plain, none, none}, .rest = {0}}, -1, 768},
      {{.header = v1, .records = {none, none, none, cut}}, -1, 0},
      {{.header = v1, .records = {{.payload = Zlib(Bytes(849))}, none, none, none}}, -1, 0},
      {{.header = v1, .records = {{.payload = Damaged(zeros)}, none, none, none}}, -1, 0},
      {{.header = Header(2, 16, 16, 16, 16), .records = {plain}}, 2 + z, 0},
      {{.header = v2, .records = {none}}, 2, 0},
      {{.header = v2, .flags = 0xFC, .records = {direct}, .rest = {0}}, 3 + z, 768},
      {{.header = v2, .flags = 0x01}, -1, 0},
      {{.header = v2, .flags = 0x01, .rest = {0}}, -1, 0},
      {{.header = v2, .flags = 0x01, .records = {{.claimedSize = 9}}, .rest = {0, 0}}, 4, 0},
      {{.header = v2, .palette = Bytes{}, .records = {direct}}, 5 + z, 768},
      {{.header = v2, .palette = colors, .records = {direct}}, 5 + c + z, 768},
      {{.header = v2, .palette = damaged, .records = {none}}, 4 + c, 0},
      {{.header = v2, .palette = few, .records = {none}}, 4 + f, 0},
      {{.header = v2, .palette = many, .records = {none}}, 4 + m, 0},
      {{.header = v2, .flags = 0x02, .records = {direct}}, 3 + z, 768},
      {{.header = v2, .flags = 0x02, .records = {none, direct}}, 5 + z, 768},
      {{.header = v2, .flags = 0x02, .records = {direct, cut}}, -1, 768},
      {{.header = v2, .flags = 0x02, .records = {cut}}, -1, 0},
      {{.header = v2, .records = {{.format = 4}}}, -1, 0},
      {{.header = v2, .records = {{.format = 4, .payload = {1}}}}, -1, 0},
      {{.header = v2, .records = {{.format = 0xE4, .band = Band{1, 2}}}}, -1, 0}};
  // clang-format on
  for (const auto& [message, result, rawDataSize] : cases) {
    Restart();
    const int unpacked = Unpack(message);
    EXPECT_EQ(std::pair(unpacked, decoder->GetBlock(0, 0)->fRawDataSize),
              std::pair(result, rawDataSize));
    EXPECT_EQ(decoder->fPalette && decoder->fPalette[1] == 0x0102FE, message.palette == colors);
  }
  // The last record failed for want of reference data; an empty one leaves its header bytes, and
  // a message the colour table that there is.
  decoder->fDecodeTable[9] = 8;
  EXPECT_EQ(Unpack({.header = v2, .records = {none}}), 2);
  EXPECT_EQ(decoder->fDecodeTable[9], 8u);
  const BitmapDataBlock& b = *decoder->GetBlock(0, 0);
  EXPECT_EQ(std::tuple(b.fFormat, b.fDiffRowStart, b.fDiffRowCount), std::tuple(0xE4, 1, 2));
  // A block that this pass has decoded, a grid that is gone, one without rows, too few bytes.
  const HostBytes records = MakeGuarded({0, 1, 0x03, 0, 0, 0, 0, 0});
  decoder->GetBlock(0, 0)->fProcessed = true;
  EXPECT_EQ(decoder->UnpackBlocks(records.get(), 8, 6), 3);
  decoder->DeleteBlocks();
  EXPECT_EQ(decoder->UnpackBlocks(records.get(), 8, 6), 3);
  decoder->fGridHeight = 0;
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 8, 3, 0), 0);
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 8, 6, 0), -1);
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 5, 6, 0), -1);
  EXPECT_EQ(decoder->UnpackMessage(records.get(), 4, 3, 0), -1);
}

TEST_F(BlockTest, FailsWhenCutAnywhere) {
  const Bytes version1 = PlainPicture(Header(3, 20, 20, 16, 16), 1).Whole().Build();
  Message message = PlainPicture(Header(6, 20, 20, 16, 16), 1).Whole();
  message.palette = Zlib(PaletteColors());
  message.flags = kFlagSecondPass;
  const std::size_t onePass = message.Build().size();
  message.records.resize(8, Record{.format = 1, .payload = {3, 0}});
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
      {"direct", 0xE0, {}, Zlib(pixels), true, 768, {{0, pixels}}, P, C},
      {"short", 0x00, {}, Zlib(rows), true, 96, {{0, rows}}, {}},
      {"without pixels", 0x00, {}, Zlib({}), true, 0, {}, P},
      {"empty", 0x00, {}, {}, true, 848, {}, P},
      {"damaged", 0x00, {}, Damaged(Zlib(pixels)), false, 0, {}, P},
      {"too long", 0x00, {}, Zlib(tooLong), false, 0, {}, P},
      {"reduced", 0x90, {}, Zlib(codes), true, 9, {{0, bgr}}, P, C, codes},
      {"most codes", 0x10, {}, Zlib(most), true, 846, {{0, Bytes(846, 255)}}, P, C, most},
      {"too many codes", 0x10, {}, Zlib(oneMore), true, 848, {}, P, C, oneMore},
      {"codes damaged", 0x10, {}, Damaged(Zlib(codes)), false, 0, {}, P, C},
      {"codes empty", 0x10, {}, {}, true, 848, {}, P, C, Bytes(1024, 0xA5)},
      {"colour field 1", 0x08, {}, Zlib(codes), true, 848, {}, P, C, codes},
      {"colour field 3", 0x18, {}, Zlib(codes), true, 848, {}, {}, {}, codes},
      {"no reference", 0x02, {}, Zlib(pixels), false, 0, {}, {}},
      {"no reference, empty", 0x01, {}, {}, false, 0, {}, {}},
      {"no reference, no rows", 0x04, {}, {}, false, 0, {}, {}, C},
      {"intermediate", 0x02, {}, Zlib(pixels), true, 768, {{0, pixels}}, P, C},
      {"fills the room", 0x02, {}, Zlib(tooLong), true, 848, {{0, room}}, P},
      {"bad check value", 0x02, {}, Damaged(Zlib(pixels)), true, 768, {{0, black}}, P},
      {"preset dictionary", 0x02, {}, Zlib(pixels, P), true, 0, {{0, black}}, P},
      {"cut off", 0x02, {}, uncheckedRows, true, 96, {{0, rows}}, P},
      {"primed", 0x01, {}, RawDeflate(turned, P), true, 768, {{0, turned}}, P, C},
      {"primed, short", 0x01, {}, RawDeflate(rows, P), true, 96, {{0, rows}}, P, {}, {}, P},
      {"primed, damaged", 0x01, {}, {7}, true, 0, {{0, black}}, P},
      {"primed, empty", 0x01, {}, {}, true, 848, {}, P},
      {"empty dictionary", 0x01, {}, RawDeflate(pixels), false, 0, {}, Bytes{}},
      {"by codes", 0x11, {}, RawDeflate(codes, C), true, 9, {{0, C}, {0, bgr}}, P, C},
      {"without codes", 0x11, {}, RawDeflate(codes, P), true, 9, {{0, P}, {0, bgr}}, P},
      {"empty codes", 0x11, {}, RawDeflate(codes), false, 0, {}, P, Bytes{}},
      {"codes beyond the room", 0x11, {}, codes, true, 9, {{0, room}, {0, bgr}}, P, tooLong},
      {"primed, field 1", 0x09, {}, RawDeflate(codes, P), true, 848, {{0, P}}, P},
      {"intermediate, field 3", 0x1A, {}, Zlib(codes), true, 848, {}, P},
      {"reduced, bad check", 0x12, {}, Damaged(Zlib(codes)), true, 9, {{0, bgr}}, P, C},
      {"reduced, no stream", 0x12, {}, {0xFF}, true, 0, {}, P},
      {"band", 0x04, kBand, Zlib(rows), true, 768, {{0, P}, {144, rows}}, P, C},
      {"primed band", 0x05, kBand, RawDeflate(rows, P), true, 768, {{0, P}, {144, rows}}, P, C},
      {"half", 0x04, kBand, Zlib(row), true, 720, {{0, head}, {144, row}, {240, tail}}, P},
      {"more", 0x04, kBand, Zlib(pixels), true, 848, {{0, P}, {144, Slice(pixels, 0, 176)}}, P},
      {"bad", 0x04, kBand, Damaged(Zlib(rows)), true, 768, {{0, P}, {144, Bytes(176)}}, P},
      {"none", 0x04, kBand, {}, true, 848, {{0, head}, {240, tail}}, P},
      {"first rows", 0x04, {0, 2}, Zlib(rows), true, 768, {{0, P}, {0, rows}}, P},
      {"last rows", 0x04, {14, 2}, Zlib(rows), true, 768, {{0, P}, {672, rows}}, P},
      {"beyond the block", 0x04, {15, 2}, Zlib(rows), false, 0, {}, Noise(848, 5)},
      {"beyond the reference", 0x04, {14, 2}, Zlib(rows), false, 0, {}, Slice(P, 0, 767)},
      {"no reference after it", 0x04, kBand, Zlib(rows), false, 0, {}, Slice(P, 0, 767)},
      {"reference too long", 0x04, {5, 0}, {}, false, 0, {}, Noise(849, 5)},
      {"codes", 0x14, kBand, Zlib(codes), true, 681, {{0, head}, {144, bgr}, {240, tail}}, P},
      {"band, field 1", 0x0C, kBand, Zlib(codes), true, 848, {{0, head}, {240, tail}}, P},
      {"no rows", 0x04, {5, 0}, {}, true, 768, {{0, P}}, P},
      {"no rows, payload", 0x04, {5, 0}, Zlib(pixels), true, 768, {{0, P}}, P},
      {"no rows, primed", 0x05, {5, 0}, RawDeflate(rows, P), true, 768, {{0, P}}, P},
      {"no rows, short", 0x14, {5, 0}, Zlib(codes), true, 96, {{0, rows}}, rows}};
  // clang-format on
  for (const PayloadCase& c : cases) CheckPayload(c);
}

TEST_F(BlockTest, TestsBandsOneByOne) {
  using Fault = RowBand::Fault;
  constexpr int kWide = 20'000'000;  // rows that leave 32 bits
  for (const auto& [width, start, rows, previous, fault] :
       {std::tuple{kWide, 72, 0, 9, Fault::kNone},
        {kWide, 70, 2, 9, Fault::kTooLarge},
        {kWide, 0, 1, 9, Fault::kTooLarge},
        {16, 18, 1, 768, Fault::kStartsBeyondRoom},
        {16, 0, 1, 849, Fault::kPreviousDataTooLong},
        {16, 14, 2, 767, Fault::kEndsBeyondPrevious},
        {16, 14, 1, 767, Fault::kPreviousDataTooShort}}) {
    BitmapDataBlock b;
    b.Initialize(0, width, width == kWide ? 90 : 16, width, false);
    b.fPreviousDataSize = previous;
    const BlockHeader header = {kFormatDiffRows, static_cast<std::uint8_t>(start),
                                static_cast<std::uint8_t>(rows)};
    RowBand band;
    EXPECT_EQ(RowBand::Find(b, header, 848, &band), fault) << start << ' ' << rows;
  }
}

TEST_F(BlockTest, PrimesWithLargeBlocks) {
  // One, two and four stored blocks; the pixels repeat, so that they compress.
  for (const auto& [size, start] : {std::pair{64, 10}, {160, 0}, {256, 251}}) {
    Bytes pixels;
    while (pixels.size() < 256 * 256 * 3) Append(&pixels, Noise(9999, 1));
    pixels.resize(static_cast<std::size_t>(size * size * 3));
    Bytes turned = pixels, banded = pixels;
    std::rotate(turned.begin(), turned.begin() + 700, turned.end());
    const Bytes rows = Slice(turned, 0, size * 3 * 5);
    std::copy(rows.begin(), rows.end(), banded.begin() + size * 3 * start);
    const FrameHeader header = Header(6, size, size, size, size);
    EXPECT_GT(Unpack({.header = header, .records = {{.format = 0, .payload = Zlib(pixels)}}}), 0);
    const BitmapDataBlock& b = *decoder->GetBlock(0, 0);
    for (const auto& [record, expected] :
         {std::pair{Record{0x01, {}, RawDeflate(turned, pixels)}, turned},
          {Record{0x05, Band{start, 5}, RawDeflate(rows, pixels)}, banded}}) {
      EXPECT_GT(Unpack({.header = header, .records = {record}}), 0);
      EXPECT_TRUE(SameBytes(expected, RawData(b), {size, 3}));
      EXPECT_TRUE(SameBytes(pixels, PreviousData(b), {size, 3}));
    }
  }
}

TEST_F(BlockTest, ConvertsColors) {
  using Case = std::tuple<Bytes, std::size_t, unsigned int, Bytes>;
  for (const auto& [codes, room, length, pixels] :
       {Case{{0xFF, 0xFF, 0xFC, 0x00}, 6, 6, {248, 248, 248, 0, 0, 248}},
        Case{{0x83, 0xE0, 0x80, 0x1F}, 6, 6, {0, 248, 0, 248, 0, 0}},
        Case{{0xC2, 0x10, 0x05, 0x7F}, 9, 9, {128, 128, 128, 255, 255, 255, 238, 238, 238}},
        Case{{5, 5, 5, 5}, 5, 5, {}}, Case{{5}, 2, 0, {}}, Case{{}, 9, 0, {}},
        Case{{0x00, 0x05, 0x80, 0x00}, 8, 6, {0, 0, 0, 255, 255, 255}},
        Case{{0x00, 0x05, 0x80, 0x00}, 9, 9, {0, 0, 0, 255, 255, 255, 0, 0, 0}},
        Case{{0x0A, 0x80}, 9, 3, {0, 0, 255}}}) {  // a code cut off
    const HostBytes target = MakeGuarded(room, 0xEE), source = MakeGuarded(codes);
    Bytes expected(room, 0xEE);
    std::copy(pixels.begin(), pixels.end(), expected.begin());
    auto produced = static_cast<unsigned int>(room), size = static_cast<unsigned int>(codes.size());
    decoder->ConvertImageColorToQuarn24(target.get(), &produced, source.get(), size, 0x10);
    EXPECT_EQ(produced, length);
    EXPECT_TRUE(SameBytes(expected, std::span(target.get(), room)));
  }
  for (unsigned int i = 0; i < 32768; ++i) {
    ASSERT_EQ(decoder->fDecodeTable[i], i / 1024 << 19 | i / 32 % 32 << 11 | i % 32 << 3);
  }
  // The default palette: no colour twice, all parts on a coarse scale, and some of them by name.
  const std::uint32_t* palette = decoder->fPalette;
  EXPECT_EQ(std::set<std::uint32_t>(palette, palette + 128).size(), 128u);
  for (unsigned int i = 0; i < 384; ++i) {
    EXPECT_EQ((palette[i / 3] >> i % 3 * 8 & 0xFF) % (i < 360 ? 0x33 : 0x11), 0u) << i / 3;
  }
  for (const auto& [index, color] : {std::pair{7, 0x660000u}, {64, 0x993399u}, {99, 0x006633u}}) {
    EXPECT_EQ(palette[index], color);
  }
}

}  // namespace
}  // namespace zlibvideo
