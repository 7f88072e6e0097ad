// Payloads of version 2: the bytes of a block after each kind.

#include "bitstream/RowBand.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using namespace formats;

/// Whether the linked zlib leaves the room behind its output alone. It need not, but Debian's does:
/// only then does a test expect anything there.
bool ZlibLeavesRoomAlone() {
  // Ends in a copy of 9 bytes from further back than a vector is long.
  Bytes content = Noise(64, 1);
  Append(&content, Slice(content, 0, 9));
  const Bytes payload = Zlib(content);
  Bytes room(content.size() + 400, 0xA5);
  auto size = static_cast<uLongf>(room.size());
  uncompress(room.data(), &size, payload.data(), static_cast<uLong>(payload.size()));
  return std::count(room.end() - 400, room.end(), 0xA5) == 400;
}

Bytes Overwritten(Bytes bytes, std::ptrdiff_t at, const Bytes& by) {
  std::copy(by.begin(), by.end(), bytes.begin() + at);
  return bytes;
}

/// The reference data of a block before a payload. Without a value, the buffer does not exist.
struct Prior {
  std::optional<Bytes> previous, converted;
};

/// A block after a payload: 16 rows of 48 bytes, in a room of 848 bytes.
struct Outcome {
  bool decodes = true;
  int length = 768;    // 0: the block does not count as decoded
  Bytes pixels = {};   // from the place of the payload's pixels on
  Bytes codes = {};    // replace the converted data
  Bytes beneath = {};  // at the begin of the block, before rows and pixels are written
};

struct PayloadTest : DecoderTest {
  void Check(const char* name, const Record& record, const Outcome& expected, const Prior& prior);
  void Check(const char* name, const Record& record, const Outcome& expected) {
    Check(name, record, expected, {P, C});
  }

  // Codes that P and C hold, and their pixels.
  const Bytes codes = {0x0A, 0x05, 0xFF, 0xFF}, bgr = {0, 0, 255, 255, 255, 255, 248, 248, 248};
  const Bytes P = Overwritten(Noise(768, 1), 0, codes), C = Overwritten(Noise(60, 3), 9, codes);
  const Bytes pixels = Noise(768, 2), rows = Slice(P, 400, 496), tooLong = Noise(900, 4);
  const Bytes room = Slice(tooLong, 0, 848), black = Bytes(848);
};

/// Decodes the payload, and compares all data that it may change.
void PayloadTest::Check(const char* name, const Record& record, const Outcome& expected,
                        const Prior& prior) {
  SCOPED_TRACE(name);
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
  ASSERT_TRUE(give(&BitmapDataBlock::SetPreviousData, prior.previous));
  ASSERT_TRUE(give(&BitmapDataBlock::SetConvertedData, prior.converted));
  const int format = *record.format;
  const Band band = record.band.value_or(Band{});
  b.fFormat = static_cast<std::uint8_t>(format);
  b.fDiffRowStart = static_cast<std::uint8_t>(band.start);
  b.fDiffRowCount = static_cast<std::uint8_t>(band.rows);
  const HostBytes payload = MakeGuarded(record.payload);
  const auto size = static_cast<unsigned int>(record.payload.size());
  unsigned int length = 848;
  const bool decodes = decoder->UnpackOneV2Block(&b, 0, payload.get(), size, nullptr, &length);
  EXPECT_EQ(decodes, expected.decodes);
  const int counted = decodes ? expected.length : 0;
  EXPECT_EQ(length, counted == 0 ? 848u : static_cast<unsigned int>(counted));
  EXPECT_EQ(std::pair(b.fRawDataSize, b.fProcessed), std::pair(counted, counted != 0));

  // An untidy zlib leaves any bytes behind its output.
  if (!ZlibLeavesRoomAlone()) raw.assign(b.fRawData, b.fRawData + 848);
  raw = Overwritten(raw, 0, expected.beneath);
  std::ptrdiff_t first = 0;
  if (decodes && (format & kBanded) != 0) {
    const Bytes& previous = *prior.previous;
    first = band.rows == 0 ? 0 : band.start * 48;
    const std::ptrdiff_t end = band.rows == 0 ? 0 : first + band.rows * 48;
    raw = Overwritten(raw, 0, Slice(previous, 0, first));
    raw = Overwritten(raw, end, Slice(previous, end, std::ssize(previous)));
  }
  raw = Overwritten(raw, first, expected.pixels);
  const bool isDirect = (format & (kPrimed | kIntermediate | kBanded)) == 0;
  if (decodes || !isDirect) {
    EXPECT_TRUE(SameBytes(raw, std::span(b.fRawData, 848)));
  }
  EXPECT_TRUE(SameBytes(
      isDirect && counted != 0 ? Slice(raw, 0, counted) : prior.previous.value_or(Bytes{}),
      PreviousData(b)));
  EXPECT_TRUE(SameBytes(expected.codes.empty() ? prior.converted.value_or(Bytes{}) : expected.codes,
                        ConvertedData(b)));
}

TEST_F(PayloadTest, DecodesDirectPayloads) {
  const Outcome fails{.decodes = false}, nothing{.length = 848};
  Check("whole", {kUnreadBits, {}, Zlib(pixels)}, {.pixels = pixels});
  Check("short", {kDirect, {}, Zlib(rows)}, {.length = 96, .pixels = rows}, {});
  Check("without pixels", {kDirect, {}, Zlib({})}, {.length = 0});
  Check("empty", {kDirect}, nothing);
  Check("damaged", {kDirect, {}, Damaged(Zlib(pixels))}, fails);
  Check("too long", {kDirect, {}, Zlib(tooLong)}, fails);

  const Bytes most(565, 5), tooMany(566, 5), stale(1024, 0xA5);
  Check("codes", {kReduced | kUnreadBits, {}, Zlib(codes)},
        {.length = 9, .pixels = bgr, .codes = codes});
  Check("most codes", {kReduced, {}, Zlib(most)},
        {.length = 846, .pixels = Bytes(846, 255), .codes = most});
  Check("too many codes", {kReduced, {}, Zlib(tooMany)}, {.length = 848, .codes = tooMany});
  Check("codes damaged", {kReduced, {}, Damaged(Zlib(codes))}, fails);
  Check("codes empty", {kReduced}, {.length = 848, .codes = stale});
  Check("field 1", {kColorField1, {}, Zlib(codes)}, {.length = 848, .codes = codes});
  Check("field 3", {kColorField3, {}, Zlib(codes)}, {.length = 848, .codes = codes}, {});
}

TEST_F(PayloadTest, DecodesIntermediatePayloads) {
  const Outcome fails{.decodes = false}, nothing{.length = 848};
  Bytes unchecked = Zlib(rows);
  unchecked.resize(unchecked.size() - 4);
  // No format bit announces the band.
  Check("whole", {kIntermediate, Band{3, 2}, Zlib(pixels)}, {.pixels = pixels});
  Check("fills the room", {kIntermediate, {}, Zlib(tooLong)}, {.length = 848, .pixels = room});
  Check("bad check value", {kIntermediate, {}, Damaged(Zlib(pixels))}, {.pixels = black});
  Check("gzip", {kIntermediate, {}, Compress(pixels, {}, MAX_WBITS + 16)},
        {.length = 0, .pixels = black});
  Check("preset dictionary", {kIntermediate, {}, Zlib(pixels, P)}, {.length = 0, .pixels = black});
  Check("cut off", {kIntermediate, {}, unchecked}, {.length = 96, .pixels = rows});
  Check("no reference", {kIntermediate, {}, Zlib(pixels)}, fails, {});
  Check("no reference, empty", {kPrimed}, fails, {});

  Check("codes, bad check value", {kIntermediate | kReduced, {}, Damaged(Zlib(codes))},
        {.length = 9, .pixels = bgr});
  Check("codes, no stream", {kIntermediate | kReduced, {}, {0xFF}}, {.length = 0});
  Check("field 3", {kIntermediate | kColorField3, {}, Zlib(codes)}, nothing);
}

TEST_F(PayloadTest, DecodesPrimedPayloads) {
  const Outcome fails{.decodes = false}, nothing{.length = 848};
  Bytes turned = P;
  std::rotate(turned.begin(), turned.begin() + 100, turned.end());
  Check("whole", {kPrimed, {}, RawDeflate(turned, P)}, {.pixels = turned});
  Check("short", {kPrimed, {}, RawDeflate(rows, P)},
        {.length = 96, .pixels = rows, .beneath = ZlibLeavesRoomAlone() ? P : Bytes{}});
  Check("damaged", {kPrimed, {}, {7}}, {.length = 0, .pixels = black});
  Check("empty", {kPrimed}, nothing, {Bytes{}, {}});
  Check("empty dictionary", {kPrimed, {}, RawDeflate(pixels)}, fails, {Bytes{}, {}});

  constexpr int kCodes = kPrimed | kReduced;
  Check("after codes", {kCodes, {}, RawDeflate(codes, C)},
        {.length = 9, .pixels = bgr, .beneath = C});
  Check("after pixels", {kCodes, {}, RawDeflate(codes, P)},
        {.length = 9, .pixels = bgr, .beneath = P}, {P, {}});
  Check("after no codes", {kCodes, {}, RawDeflate(codes)}, fails, {P, Bytes{}});
  Check("after codes beyond the room", {kCodes, {}, codes},
        {.length = 9, .pixels = bgr, .beneath = room}, {P, tooLong});
  Check("field 1", {kPrimed | kColorField1, {}, RawDeflate(codes, P)},
        {.length = 848, .beneath = P}, {P, {}});
}

TEST_F(PayloadTest, DecodesBandedPayloads) {
  // 144 bytes before the band, 96 in it, 528 after it.
  constexpr Band kBand{3, 2}, kNoRows{5, 0};
  const Outcome fails{.decodes = false}, likeP{.length = 768};
  Check("whole", {kBanded, kBand, Zlib(rows)}, {.pixels = rows});
  Check("primed", {kPrimed | kBanded, kBand, RawDeflate(rows, P)}, {.pixels = rows, .beneath = P});
  Check("half", {kBanded, kBand, Zlib(Slice(rows, 0, 48))},
        {.length = 720, .pixels = Slice(rows, 0, 48)});
  Check("more than the band", {kBanded, kBand, Zlib(pixels)},
        {.length = 848, .pixels = Slice(pixels, 0, 176)});
  Check("damaged", {kBanded, kBand, Damaged(Zlib(rows))}, {.pixels = Bytes(176)});
  Check("empty", {kBanded, kBand}, {.length = 848});
  Check("first rows", {kBanded, Band{0, 2}, Zlib(rows)}, {.pixels = rows});
  Check("last rows", {kBanded, Band{14, 2}, Zlib(rows)}, {.pixels = rows});
  Check("codes", {kBanded | kReduced, kBand, Zlib(codes)}, {.length = 681, .pixels = bgr});
  Check("more codes than the band", {kBanded | kReduced, kBand, Zlib(Bytes(40, 5))},
        {.length = 792, .pixels = Bytes(120, 255)});
  Check("field 1", {kBanded | kColorField1, kBand, Zlib(codes)}, {.length = 848});

  Check("no rows", {kBanded, kNoRows}, likeP);
  Check("no rows, payload", {kBanded, kNoRows, Zlib(pixels)}, likeP);
  Check("no rows, primed", {kPrimed | kBanded, kNoRows, RawDeflate(rows, P)}, likeP);
  Check("no rows, short", {kBanded | kReduced, kNoRows, Zlib(codes)}, {.length = 96}, {rows, {}});
  Check("no rows, no reference", {kBanded, kNoRows}, fails, {{}, C});

  const Record last{kBanded, Band{14, 2}, Zlib(rows)};
  Check("beyond the block", {kBanded, Band{15, 2}, Zlib(rows)}, fails, {Noise(848, 5), {}});
  Check("beyond the reference", last, fails, {Slice(P, 0, 767), {}});
  Check("short reference", {kBanded, kBand, Zlib(rows)}, fails, {Slice(P, 0, 767), {}});
  Check("long reference", {kBanded, kNoRows}, fails, {Noise(849, 5), {}});
}

TEST_F(PayloadTest, FindsAnEmptyBandWhereThereAreNoRows) {
  RowBand band{1, 1, 1};
  EXPECT_TRUE(RowBand::Find(BitmapDataBlock(), {kBanded, 72, 0}, 848, &band));
  EXPECT_TRUE(band.IsEmpty());
}

TEST_F(PayloadTest, PrimesWithLargeBlocks) {
  // The dictionary is one, two or four stored blocks. Payloads repeat pixels from so far back that
  // they refer to nearly all of the history.
  Bytes all;
  while (all.size() < 2 * 256 * 256 * 3) Append(&all, Noise(32'000, 1));
  for (const int side : {112, 160, 256}) {
    SCOPED_TRACE(side);
    const int size = side * side * 3;
    const Bytes before = Slice(all, 0, size), after = Slice(all, size, 2 * size);
    Message message = {.header = Header(6, side, side, side, side)};
    const auto decode = [&](const Record& record) {
      message.records = {record};
      return Decode(message.Build(), true);
    };
    EXPECT_TRUE(decode({kDirect, {}, Zlib(before)}));
    // Behind the few pixels of codes, the block shows the whole dictionary.
    for (const auto& [record, expected] :
         {std::pair{Record{kPrimed, {}, RawDeflate(after, before)}, after},
          {Record{kPrimed | kReduced, {}, RawDeflate(codes, before)},
           Overwritten(before, 0, bgr)}}) {
      EXPECT_LT(record.payload.size(), 2000u) << "must refer to the dictionary";
      EXPECT_TRUE(decode(record));
      const BitmapDataBlock& b = *decoder->GetBlock(0, 0);
      EXPECT_TRUE(SameBytes(expected, std::span(b.fRawData, expected.size())));
      EXPECT_TRUE(SameBytes(before, PreviousData(b)));
    }
  }
}

}  // namespace
}  // namespace zlibvideo
