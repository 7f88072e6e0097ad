// Drawing only what changed, and beginning in the middle of a stream: random streams with every
// kind of record, some damaged, beside drawing whole pictures from the start.

#include <map>

#include "bitstream/StandaloneFinder.h"
#include "host/SRECT.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using namespace formats;

using ChangesTest = DecoderTest;
using Calls = std::vector<std::string>;

/// Makes messages for a decoder whose reference data it looks at, so that primed payloads refer to
/// it.
class RandomStream {
 public:
  explicit RandomStream(unsigned int start)
      : fRandom(start), fPalettes(start % 2 == 0 ? 30 : 0), fVersion1(start % 3 == 0 ? 30 : 0) {}

  Bytes Next(const DecoderProbe& decoder) {
    if (Chance(8)) fGeometry = Below(4);
    FrameHeader header = kGeometries[fGeometry];
    header.frameType = 1 + Below(2);
    header.codecType = Chance(5) ? 2 : Chance(fVersion1) ? kCodecTypeVersion1 : kCodecTypeVersion2;
    const PlainPicture picture(header, static_cast<unsigned int>(fRandom()));
    fReferences.clear();
    Message message{.header = header};
    const bool isVersion2 = header.codecType == kCodecTypeVersion2;
    if (isVersion2 && Chance(fPalettes)) message.palette = Zlib(PaletteColors());
    if (isVersion2 && Chance(30)) message.flags = kFlagSecondPass;
    const int passes = message.flags != 0 && Chance(80) ? 2 : 1;
    const bool isWhole = Chance(60);
    fFaults = Chance(50) ? 4 : 0;
    fReduced = Chance(30) ? 40 : Chance(60) ? 100 : 0;
    const int share = isWhole ? 100 : Chance(50) ? 20 : 80;
    for (int pass = 0; pass < passes; ++pass) {
      for (std::size_t i = 0; i < picture.blocks.size(); ++i) {
        Record record;
        if (Chance(share)) {
          record = isVersion2 ? Version2(decoder, i, picture.blocks[i], isWhole && pass == 0)
                              : Record{.payload = Zlib(Cut(picture.blocks[i]))};
        }
        if (Chance(fFaults) && !record.payload.empty()) record.payload.back() ^= 0xFF;
        message.records.push_back(record);
      }
    }
    Bytes bytes = message.Build();
    if (Chance(5)) bytes.resize(bytes.size() * static_cast<std::size_t>(Below(100)) / 100);
    return bytes;
  }

 private:
  struct Reference {
    Bytes pixels, codes;
  };

  static inline const FrameHeader kGeometries[] = {
      Header(0, 40, 24, 16, 16), Header(0, 33, 20, 32, 16), Header(0, 16, 16, 16, 16),
      Header(0, 50, 35, 48, 16)};

  int Below(int end) { return static_cast<int>(fRandom() % static_cast<unsigned int>(end)); }
  bool Chance(int percent) { return Below(100) < percent; }

  /// Sometimes less than the block, or nothing.
  Bytes Cut(Bytes pixels) {
    if (Chance(fFaults)) pixels.resize(pixels.size() * static_cast<std::size_t>(Below(3)) / 3);
    return pixels;
  }

  Reference& ReferenceOf(const DecoderProbe& decoder, std::size_t index) {
    const auto [found, isNew] = fReferences.try_emplace(index);
    const auto count = static_cast<std::size_t>(decoder.fGridWidth * decoder.fGridHeight);
    if (isNew && decoder.fBlocks != nullptr && index < count) {
      const auto previous = PreviousData(*decoder.fBlocks[index]);
      const auto converted = ConvertedData(*decoder.fBlocks[index]);
      found->second.pixels.assign(previous.begin(), previous.end());
      found->second.codes.assign(converted.begin(), converted.end());
    }
    return found->second;
  }

  Record Version2(const DecoderProbe& decoder, std::size_t index, Bytes pixels, bool isDirect) {
    Reference& reference = ReferenceOf(decoder, index);
    Record record{.format = Chance(fReduced) ? kReduced : 0};
    if (Chance(fFaults)) record.format = Chance(50) ? kColorField1 : kColorField3;
    if (!isDirect && Chance(60)) *record.format |= 1 + Below(7);
    if ((*record.format & kBanded) != 0) record.band = Band{Below(8), Below(4)};
    if (Chance(fFaults)) return record;

    const bool isReduced = (*record.format & kReduced) != 0;
    const Bytes data = Cut(isReduced ? ReduceColors(&pixels) : pixels);
    const Bytes dictionary =
        isReduced && !reference.codes.empty() ? reference.codes : reference.pixels;
    const bool isPrimed = (*record.format & kPrimed) != 0;
    // Much of the dictionary, so that the payload refers to it.
    Bytes sent = isPrimed && Chance(80) ? dictionary : data;
    if (isPrimed && data.size() > 9 && sent.size() > 9) std::copy_n(data.begin(), 9, sent.begin());
    record.payload = isPrimed ? RawDeflate(sent, dictionary) : Zlib(data);
    if (IsDirect(static_cast<unsigned int>(*record.format))) {
      if (isReduced) reference.codes = data;
      reference.pixels = pixels;
    }
    return record;
  }

  std::mt19937 fRandom;
  int fPalettes, fVersion1;       // percent of messages
  int fFaults = 0, fReduced = 0;  // percent of records; faults of each kind
  int fGeometry = 0;
  std::map<std::size_t, Reference> fReferences;
};

struct Shown {
  Bytes message;
  bool decoded = false;
  BitmapPixels bitmap;
};

/// A stream with the whole picture after each message.
std::vector<Shown> Play(Player* player, unsigned int start) {
  constexpr int kMessages = 30;
  player->Restart();
  RandomStream random(start);
  std::vector<Shown> stream;
  for (int i = 0; i < kMessages; ++i) {
    Shown shown{.message = random.Next(*player->decoder), .bitmap = {}};
    shown.decoded = player->Decode(shown.message);
    shown.bitmap = player->video->bitmap.Pixels();
    stream.push_back(shown);
  }
  return stream;
}

TEST_F(ChangesTest, GiveTheWholePictureOfAnyStream) {
  for (unsigned int start = 0; start < 25; ++start) {
    const std::vector<Shown> stream = Play(this, start);
    std::mt19937 random(start);
    Restart();
    for (std::size_t i = 0; i < stream.size(); ++i) {
      SCOPED_TRACE(testing::Message() << "stream " << start << ", message " << i);
      const auto& [message, decoded, bitmap] = stream[i];
      ASSERT_EQ(Decode(message, true), decoded);
      if (!decoded || random() % 3 == 0) continue;
      decoder->PushChanges(&video->bitmap);
      ASSERT_TRUE(Shows(bitmap));
    }
  }
}

TEST_F(ChangesTest, TellTheHostTheLeastArea) {
  PlainPicture picture(Header(3, 40, 40, 16, 16), 1);
  EXPECT_TRUE(Decode(picture.Whole().Build(), true));
  const auto draw = [&](const char* area) {
    Host().calls.clear();
    const SRECT drawn = decoder->PushChanges(&video->bitmap);
    std::ostringstream text;
    text << "UpdateMipMap " << drawn.xMin << ' ' << drawn.xMax << ' ' << drawn.yMin << ' '
         << drawn.yMax;
    const bool isEmpty = std::string(area).empty();
    EXPECT_EQ(text.str(), isEmpty ? "UpdateMipMap 0 0 0 0" : area);
    EXPECT_EQ(Host().calls, isEmpty ? Calls{} : (Calls{"LockBits 1", area, "UnlockBits"}));
    EXPECT_TRUE(Shows(picture.Bitmap()));
  };
  const auto change = [&](std::initializer_list<std::size_t> blocks) {
    Message message{.header = picture.header, .records = std::vector<Record>(9)};
    for (const std::size_t block : blocks) {
      picture.blocks[block] = Noise(picture.blocks[block].size(), 7);
      message.records[block].payload = Zlib(picture.blocks[block]);
    }
    return message;
  };
  draw("UpdateMipMap 0 40 0 40");
  draw("");
  EXPECT_TRUE(Decode(change({1, 5}).Build(), true));
  draw("UpdateMipMap 16 40 8 40");
  EXPECT_TRUE(Decode(change({6}).Build(), true));
  draw("UpdateMipMap 0 16 0 8");

  // A failed message, drawn with the next that succeeds.
  Message failing = change({3});
  failing.records[8].payload = {1};
  EXPECT_FALSE(Decode(failing.Build(), true));
  picture.blocks[8] = Noise(picture.blocks[8].size(), 9);
  Message mending = change({});
  mending.records[8].payload = Zlib(picture.blocks[8]);
  EXPECT_TRUE(Decode(mending.Build(), true));
  draw("UpdateMipMap 0 40 0 24");

  // Whole pictures count, and a bitmap that cannot be addressed does not.
  EXPECT_TRUE(Decode(change({0}).Build()));
  draw("");
  EXPECT_TRUE(Decode(change({4}).Build(), true));
  CountingBitmap elsewhere;
  elsewhere.Realloc(40, 40, kBitmapNotAddressable);
  EXPECT_EQ(decoder->PushChanges(&elsewhere).xMax, 0);
  draw("UpdateMipMap 16 32 8 24");

  // Into another bitmap, changes alone do not make a picture.
  EXPECT_TRUE(Decode(change({6}).Build(), true));
  CountingBitmap another;
  another.Realloc(40, 40, kBitmapVideoFrame);
  decoder->PushChanges(&another);
  BitmapPixels block = picture.Bitmap();
  for (std::size_t byte = 0; byte < block.bytes.size(); ++byte)
    if (byte / 160 >= 8 || byte % 160 >= 64) block.bytes[byte] = 0xA5;
  EXPECT_TRUE(SamePixels(block, another.Pixels()));
  decoder->PushFrame(&another);
  EXPECT_TRUE(SamePixels(picture.Bitmap(), another.Pixels()));
}

TEST_F(ChangesTest, AreDrawnAgainAfterAnExceptionOfTheHost) {
  PlainPicture picture(Header(3, 16, 16, 16, 16), 1);
  for (const bool whole : {true, false}) {
    SCOPED_TRACE(whole ? "whole" : "changes");
    picture.blocks[0][0] ^= 1;
    EXPECT_TRUE(Decode(picture.Whole().Build(), true));
    SBitmapCore* const bitmap = &video->bitmap;
    Host().throwOnUpdate = true;
    EXPECT_ANY_THROW(whole ? decoder->PushFrame(bitmap) : void(decoder->PushChanges(bitmap)));
    EXPECT_EQ(decoder->PushChanges(bitmap).xMax, 16);
    EXPECT_TRUE(Shows(picture.Bitmap()));
  }
}

TEST_F(ChangesTest, PassOverMissingRecords) {
  FailAt(5, AllocationFailure::kNull);  // the third record, the first of the upper row
  const PlainPicture picture(Header(3, 20, 20, 16, 16), 1);
  EXPECT_FALSE(Decode(picture.Whole().Build(), true));
  EXPECT_TRUE(Decode(picture.Whole().Build(), true));
  EXPECT_FALSE(decoder->IsComplete());
  EXPECT_EQ(decoder->PushChanges(&video->bitmap).yMin, 4);
  BitmapPixels expected = picture.Bitmap();
  std::fill_n(expected.bytes.begin(), 4 * 20 * kBitmapPixelBytes, 0xA5);
  EXPECT_TRUE(Shows(expected));
}

TEST_F(ChangesTest, KnowWhetherThePictureIsComplete) {
  const FrameHeader v1 = Header(3, 32, 16, 16, 16), v2 = Header(6, 32, 16, 16, 16);
  const Bytes noise = Noise(768, 1), codes(256, 5);
  const Record full{.payload = Zlib(noise)}, v2Full{.format = kDirect, .payload = Zlib(noise)};
  const Record reduced{.format = kReduced, .payload = Zlib(codes)};
  struct Case {
    const char* name;
    FrameHeader header;
    Record second;  // after a full first
    bool isComplete;
  };
  for (const Case& c :
       {Case{"no record", v1, {}, false}, Case{"full", v1, full, true},
        Case{"short", v1, {.payload = Zlib(Noise(767, 1))}, false},
        Case{"damaged", v1, {.payload = {1}}, false}, Case{"direct", v2, v2Full, true},
        Case{"direct, short", v2, {.format = kDirect, .payload = Zlib(Noise(767, 1))}, false},
        Case{"direct, empty", v2, {.format = kDirect}, false}, Case{"codes", v2, reduced, true},
        Case{"codes, short", v2, {.format = kReduced, .payload = Zlib(Bytes(255, 5))}, false},
        Case{"codes, rejected", v2, {.format = kColorField1, .payload = Zlib(codes)}, false}}) {
    SCOPED_TRACE(c.name);
    Restart();
    EXPECT_FALSE(decoder->IsComplete());
    const bool isVersion2 = c.header.codecType == kCodecTypeVersion2;
    const Message message{.header = c.header, .records = {isVersion2 ? v2Full : full, c.second}};
    static_cast<void>(Decode(message.Build(), true));
    EXPECT_EQ(decoder->IsComplete(), c.isComplete);
    // A later failure does not undo it.
    static_cast<void>(Decode(Message{.header = v1, .records = {{.payload = {1}}, {}}}.Build()));
    EXPECT_EQ(decoder->IsComplete(), c.isComplete);
    EXPECT_TRUE(decoder->SetupCodec(16, 16, 16, 16));
    EXPECT_FALSE(decoder->IsComplete());
  }
}

TEST_F(ChangesTest, FollowAStreamFromEveryMessageThatStandsAlone) {
  int found = 0;
  for (unsigned int start = 100; start < 130; ++start) {
    const std::vector<Shown> stream = Play(this, start);
    StandaloneFinder finder(kStateNone);
    for (std::size_t first = 0; first < stream.size(); ++first) {
      const Bytes& message = stream[first].message;
      const bool standsAlone =
          finder.Next(message.data(), static_cast<unsigned int>(message.size()));
      if (!standsAlone || !stream[first].decoded) continue;
      Restart();
      // Payloads that fail or end early show only here.
      if (!Decode(message) || !decoder->IsComplete()) continue;
      found += first != 0;
      for (std::size_t i = first; i < stream.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "stream " << start << " from " << first << " at " << i);
        if (i != first) {
          ASSERT_EQ(Decode(stream[i].message), stream[i].decoded);
        }
        ASSERT_TRUE(Shows(stream[i].bitmap));
      }
    }
  }
  EXPECT_GT(found, 100);
}

TEST_F(ChangesTest, FindMessagesThatStandAlone) {
  const FrameHeader v1 = Header(3, 32, 16, 16, 16), v2 = Header(6, 32, 16, 16, 16);
  const Bytes any(1);
  const Record none, raw{.payload = any}, direct{.format = kDirect, .payload = any};
  const Record codes{.format = kReduced, .payload = any};
  const Record intermediate{.format = kIntermediate, .payload = any};
  const Record primedCodes{.format = kPrimed | kReduced, .payload = any};
  const Message whole1{.header = v1, .records = {raw, raw}};
  const Message whole2{.header = v2, .records = {direct, direct}};
  const Message reduced{.header = v2, .records = {codes, codes}};
  const Message withPalette{.header = v2, .palette = any, .records = {codes, codes}};
  const Message calm{.header = v2, .records = {direct, none}};
  const auto passes = [&](Record first, Record second) {
    return Message{v2, kFlagSecondPass, {}, {direct, first, none, second}, {}};
  };
  const Message calm1{.header = v1, .records = {raw, none}};
  Message cut = whole1, other = whole1, larger = calm;
  cut.records.back().claimedSize = 2;
  other.header.codecType = 2;
  larger.header.imageWidth = 31;
  const auto next = [](StandaloneFinder* finder, const Message& message) {
    const Bytes bytes = message.Build();
    return finder->Next(bytes.data(), static_cast<unsigned int>(bytes.size()));
  };
  struct Case {
    const char* name;
    std::vector<Message> before;
    Message message;
    bool standsAlone;
  };
  for (const Case& c :
       {Case{"first of all", {}, calm, true}, Case{"first, cut off", {}, cut, false},
        Case{"version 1", {whole1}, whole1, true},
        Case{"version 1 behind version 2", {whole2}, whole1, false},
        Case{"a block is left behind a message cut off", {cut}, calm1, false},
        Case{"records of no known type", {other}, calm, true},
        Case{"pixels behind codes", {reduced}, whole2, false},
        Case{"codes behind codes", {reduced}, reduced, true},
        Case{"behind a palette", {withPalette}, whole2, false},
        Case{"with a palette behind it", {withPalette}, withPalette, true},
        Case{"other geometry", {whole2}, larger, true},
        Case{"other geometry behind a palette", {withPalette}, larger, false},
        Case{"intermediate on the first pass", {whole2}, passes(direct, intermediate), true},
        Case{"intermediate before its reference", {whole2}, passes(intermediate, direct), false},
        Case{"codes primed with pixels", {whole2}, passes(direct, primedCodes), true},
        Case{"codes primed with codes from before", {reduced}, passes(direct, primedCodes), false},
        Case{"empty payload", {whole1}, passes({.format = kDirect}, none), false},
        Case{"no conversion",
             {whole2},
             passes(direct, {.format = kColorField1, .payload = any}),
             false}}) {
    StandaloneFinder finder(kStateNone);
    for (const Message& message : c.before) static_cast<void>(next(&finder, message));
    EXPECT_EQ(next(&finder, c.message), c.standsAlone) << c.name;
  }
  // In the middle of a stream.
  StandaloneFinder any1(kStatePixels), any2(kStateAll), any3(kStateAll);
  EXPECT_TRUE(next(&any1, whole1));
  EXPECT_FALSE(next(&any2, reduced));
  EXPECT_TRUE(next(&any3, withPalette));
}

}  // namespace
}  // namespace zlibvideo
