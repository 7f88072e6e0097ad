// Drawing only changed blocks, and beginning in the middle of a stream. Random streams have every
// kind of record, some damaged, and must show the same as whole pictures drawn from the start.

#include <map>

#include "bitstream/StandaloneFinder.h"
#include "host/SRECT.h"
#include "tests/CountingHost.h"

namespace zlibvideo {
namespace {

using namespace formats;

using ChangesTest = DecoderTest;
using Calls = std::vector<std::string>;

/// Makes messages for a decoder. Primed payloads refer to the decoder's reference data.
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
  const auto decode = [&](std::initializer_list<std::size_t> blocks, bool skipPush = true) {
    Message message{.header = picture.header, .records = std::vector<Record>(9)};
    for (const std::size_t block : blocks) {
      picture.blocks[block] = Noise(picture.blocks[block].size(), 7);
      message.records[block].payload = Zlib(picture.blocks[block]);
    }
    EXPECT_TRUE(Decode(message.Build(), skipPush));
    Host().calls.clear();
  };
  const auto draw = [&](const std::string& area) {
    const SRECT drawn = decoder->PushChanges(&video->bitmap);
    std::ostringstream text;
    text << drawn.xMin << ' ' << drawn.xMax << ' ' << drawn.yMin << ' ' << drawn.yMax;
    EXPECT_EQ(text.str(), area);
    const Calls calls = {"LockBits 1", "UpdateMipMap " + area, "UnlockBits"};
    EXPECT_EQ(Host().calls, area == "0 0 0 0" ? Calls{} : calls);
    EXPECT_TRUE(Shows(picture.Bitmap()));
  };
  decode({0, 1, 2, 3, 4, 5, 6, 7, 8});
  draw("0 40 0 40");
  Host().calls.clear();
  draw("0 0 0 0");
  decode({1, 5});
  draw("16 40 8 40");
  decode({6});
  draw("0 16 0 8");
  decode({3, 7});
  draw("0 32 0 24");

  // A failed message is drawn with the next message that succeeds.
  picture.blocks[3] = Noise(768, 9);
  const Record changed{.payload = Zlib(picture.blocks[3])}, damaged{.payload = {1}};
  EXPECT_FALSE(Decode(Message{picture.header, 0, {}, {{}, {}, {}, changed, damaged}, {}}.Build()));
  EXPECT_EQ(std::pair(Host().calls.size(), decoder->fDecodedFrameCount), std::pair(3ul, 4u));
  decode({4});
  draw("0 32 8 24");

  // Whole pictures count, and a bitmap that cannot be addressed does not.
  decode({0}, false);
  draw("0 0 0 0");
  decode({4});
  CountingBitmap elsewhere;
  elsewhere.Realloc(40, 40, kBitmapNotAddressable);
  EXPECT_EQ(decoder->PushChanges(&elsewhere).xMax, 0);
  draw("16 32 8 24");

  // Into another bitmap, changes alone do not make a picture.
  decode({6});
  CountingBitmap another;
  another.Realloc(40, 40, kBitmapVideoFrame);
  decoder->PushChanges(&another);
  EXPECT_TRUE(SameBytes(Bytes(32 * 160, 0xA5), Slice(another.Pixels().bytes, 8 * 160, 40 * 160)));
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

TEST_F(ChangesTest, KnowWhetherThePictureIsComplete) {
  const Bytes noise = Noise(768, 1), codes(256, 5);
  struct Case {
    const char* name;
    int codecType;
    Record second;  // after a full first
    bool isComplete = false;
    Record again = {};  // for the second block in a second pass
  };
  for (const Case& c :
       {Case{"no record", 3, {}}, Case{"full", 3, {.payload = Zlib(noise)}, true},
        Case{"short", 3, {.payload = Zlib(Noise(767, 1))}}, Case{"damaged", 3, {.payload = {1}}},
        Case{"direct", 6, {kDirect, {}, Zlib(noise)}, true},
        Case{"direct, short", 6, {kDirect, {}, Zlib(Noise(767, 1))}},
        Case{"direct, empty", 6, {.format = kDirect}},
        Case{"short, then intermediate",
             6,
             {kDirect, {}, Zlib(Noise(767, 1))},
             false,
             {kIntermediate, {}, Zlib(noise)}},
        Case{"codes", 6, {kReduced, {}, Zlib(codes)}, true},
        Case{"codes, rejected", 6, {kColorField1, {}, Zlib(codes)}}}) {
    SCOPED_TRACE(c.name);
    Restart();
    EXPECT_FALSE(decoder->IsComplete());
    Message message = PlainPicture(Header(c.codecType, 32, 16, 16, 16), 1).Whole();
    message.records[1] = c.second;
    if (!c.again.payload.empty()) {
      message.flags = kFlagSecondPass;
      message.records.insert(message.records.end(), {{}, c.again});
    }
    static_cast<void>(Decode(message.Build(), true));
    EXPECT_EQ(decoder->IsComplete(), c.isComplete);
    // A later failure does not undo it.
    message.records[0] = {.format = kDirect, .payload = {1}};
    EXPECT_FALSE(Decode(message.Build()));
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
  const Message calm1{.header = v1, .records = {raw, none}};
  const Message calm{.header = v2, .records = {direct, none}};
  const auto passes = [&](Record first, Record second) {
    return Message{v2, kFlagSecondPass, {}, {direct, first, none, second}, {}};
  };
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
    std::optional<Message> before;
    Message message;
    bool standsAlone = true;
  };
  for (const Case& c :
       {Case{"first of all", {}, calm}, Case{"first, cut off", {}, cut, false},
        Case{"version 1", whole1, whole1}, Case{"records of no known type", other, calm},
        Case{"codes behind codes", reduced, reduced},
        Case{"with a palette behind it", withPalette, withPalette},
        Case{"other geometry", whole2, larger},
        Case{"other geometry behind a palette", withPalette, larger, false},
        Case{"a block is left", whole1, calm1, false},
        Case{"intermediate on the first pass", whole2, passes(direct, intermediate)},
        Case{"intermediate before its reference", whole2, passes(intermediate, direct), false},
        Case{"codes primed with pixels", whole2, passes(direct, primedCodes)},
        Case{"codes primed with codes from before", reduced, passes(direct, primedCodes), false},
        Case{"empty payload", whole1, passes({.format = kDirect}, none), false},
        Case{"no conversion", whole2, passes(direct, {kColorField1, {}, any}), false}}) {
    StandaloneFinder finder(kStateNone);
    if (c.before) static_cast<void>(next(&finder, *c.before));
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
