#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/StreamBuilder.h"
#include "tools/stream/Diagnosis.h"
#include "tools/stream/StreamDecoder.h"

namespace zlibvideo {
namespace {

using namespace formats;

// Two blocks of 16x16: 768 bytes of pixels each in a room of 848 bytes. The scratch buffer has
// 1024.
const Record kEmpty = {};

Record Direct(std::size_t bytes, int format = kDirect) {
  return {.format = format, .payload = Zlib(Noise(bytes, 1))};
}
Record Banded(int start, int rows) {
  return {.format = kBanded, .band = Band{start, rows}, .payload = Zlib(Bytes(48, 0x55))};
}
Message V1(const Record& record) {
  return {.header = Header(kCodecTypeVersion1, 32, 16, 16, 16), .records = {record}};
}
Message V2(const std::vector<Record>& records, unsigned int flags = 0, const Bytes& rest = {}) {
  return {Header(kCodecTypeVersion2, 32, 16, 16, 16), flags, {}, records, rest};
}

struct Fault {
  Message damaged;
  std::string explanation;
  /// Of the failure. 6 is the first record of version 2.
  std::size_t offset = 6;
  std::vector<Message> before = {};
};

std::vector<Fault> Faults() {
  const std::string first = "block 0,0: ";
  const std::string badStream = "its zlib stream is damaged or too long";
  const std::string badBand = "its band does not fit the reference data";
  const std::size_t behindBand = 6 + Banded(0, 2).Build().size() + 2;
  const std::size_t behindReduced = 6 + Direct(768).Build().size();
  return {
      {{.header = {0, 3, 32, 16, 16, 16}, .rest = {0, 0}}, "its frame type is 0", 0},
      {{.header = {1, 3, 32, 0, 16, 16}, .rest = {0, 0}}, "its picture has no pixels", 1},
      {V2({}), "it is too short for a message"},
      {V2({}, kFlagPalette, {0}), "it ends before the size of its palette"},
      {V1(kEmpty), "block 0,1: its record reaches past the end of the message", 7},
      {V1({.payload = {1, 2, 3}, .claimedSize = 9}),
       first + "its record reaches past the end of the message", 5},
      {V2({{.format = kBanded, .payload = {0}}}), first + "its record is too short for its header"},
      {V1({.payload = {1, 2}}), first + badStream, 5},
      {V2({Direct(1025, kReduced)}), first + badStream},
      {{.header = Header(6, 16, 32, 16, 16), .records = {kEmpty, {.format = kIntermediate}}},
       "block 1,0: it has no reference data",
       8},
      {V2({Banded(0, 2), kEmpty, Banded(15, 2)}, kFlagSecondPass),
       "block 0,0 in pass 2: " + badBand,
       behindBand,
       {V2({Direct(768), kEmpty})}},
      {V2({Direct(768, kIntermediate), Direct(9, kPrimed | kReduced)}),
       "block 0,1: its dictionary is empty",
       behindReduced,
       {V2({Direct(768), Direct(400, kReduced)}), V2({Direct(768), Direct(0, kReduced)})}},
  };
}

TEST(DiagnosisTest, NamesPlaceAndFault) {
  for (Fault& fault : Faults()) {
    StreamDecoder stream;
    fault.before.push_back(fault.damaged);
    Bytes bytes(4096);  // all messages at the same address, as in a reader's buffer
    for (const Message& message : fault.before) {
      const Bytes built = message.Build();
      std::copy(built.begin(), built.end(), bytes.begin());
      const auto length = static_cast<std::uint32_t>(built.size());
      const bool last = &message == &fault.before.back();
      ASSERT_NE(stream.Decode({bytes.data(), length, 0, 0}), last) << fault.explanation;
      if (!last) continue;
      const Failure failure =
          Diagnose(stream.Decoder(), MessageOutline::Read({bytes.data(), length}));
      EXPECT_EQ(ExplainFailure(failure), fault.explanation);
      EXPECT_EQ(failure.offset, fault.offset) << fault.explanation;
    }
  }
}

}  // namespace
}  // namespace zlibvideo
