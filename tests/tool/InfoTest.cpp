#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/StreamBuilder.h"
#include "tests/tool/ToolFixture.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {
namespace {

using namespace formats;

using Json = nlohmann::json;

const Record kEmpty = {};
/// The pixels of a block of 16x16.
const Record kDirectRecord = {.format = kDirect, .payload = Zlib(Noise(768, 1))};
const Record kBand = {.format = kBanded, .band = Band{3, 1}, .payload = Zlib(Bytes(48, 0x55))};
const Record kTooLong = {.format = kDirect, .payload = Zlib(Noise(849, 1))};

/// A picture of two blocks.
Message Version2(const std::vector<Record>& records) {
  return {.header = Header(kCodecTypeVersion2, 32, 16, 16, 16), .records = records};
}

/// A stream with a name that a page must not take for markup. Its last message fails.
class InfoTest : public ToolFixture {
 protected:
  InfoTest() {
    fFirst.flags = kFlagSecondPass;
    fFirst.palette = Zlib(Bytes(384));
    fFirst.rest = {7, 7};
    MessageFileWriter writer(Path("<b>.zvm"));
    for (const Message& message :
         {fFirst, Version2({kEmpty, kBand}), Version2({kEmpty, kTooLong})}) {
      const Bytes bytes = message.Build();
      writer.Write(bytes.data(), bytes.size());
    }
    writer.Commit();
  }

  Message fFirst = Version2({kDirectRecord, kDirectRecord, kEmpty, kEmpty});
};

TEST_F(InfoTest, PrintsATableAndMaps) {
  const Outcome text = Run(
      "head -c 3000 /dev/zero >>'<b>.zvm'; zlibvideo info --map '<b>.zvm'; zlibvideo info --json "
      "'<b>.zvm' | wc -l");
  for (const char* part :
       {"version 2, 32x16 pixels in 2x1 blocks of 16x16\n    # type",
        " 100.0 %  D2, palette installed, 2 passes, 2 bytes not read\n      DD\n",
        " 50.0 %  B1\n      .B\n", " 0.0 %\n      ! block 0,1: its zlib stream is damaged",
        "too long\n      .!\n", "\n      ! messages 4 to 1003, from byte ",
        "2 messages decoded (2 key frames)\n! 1001 messages failed\n", "\n1003\n"}) {
    EXPECT_NE(text.text.find(part), std::string::npos) << part << "\n" << text.text;
  }
  EXPECT_EQ(text.text.find('\x1B'), std::string::npos) << "colour in a pipe";
}

TEST_F(InfoTest, TellsThatTheStreamEndsEarlyAndPrintsNoControlCharacters) {
  const std::string hostile = "'\x1B[7m\n\xC2\x9B'";
  const Outcome cut =
      Run("head -c -1 '<b>.zvm' >" + hostile + "; zlibvideo info " + hostile + "; rm *7*");
  EXPECT_NE(cut.text.find("! ?[7m??: ends early at byte"), std::string::npos) << cut.text;
  EXPECT_EQ(cut.text.find_first_of("\x1B\x9B"), std::string::npos);
}

TEST_F(InfoTest, ShowsEachMessageWhenItIsThere) {
  for (const std::string form : {"", "--json"}) {
    const Outcome first = Run(
        "rm -f in; mkfifo in; zlibvideo info in " + form +
        " >out 2>&1 & exec 3>in; head -c 700 '<b>.zvm' >&3; cat '<b>.zvm' >&3; "
        "for i in $(seq 900); do grep -q 1 out && break; sleep 0.01; done; wc -l <out; exec 3>&-");
    EXPECT_NE(first.text, "0\n") << form;
  }
}

TEST_F(InfoTest, WritesAnObjectForEveryMessage) {
  std::istringstream lines(Run("zlibvideo info --json '<b>.zvm'").text);
  Json objects[3];
  lines >> objects[0] >> objects[1] >> objects[2];
  Json expected = Json::parse(R"({
      "index": 0, "offset": 3, "decoded": true, "frame_type": 1, "key_frame": true,
      "codec_type": 6, "picture": {"width": 32, "height": 16}, "block": {"width": 16, "height": 16},
      "grid": {"columns": 2, "rows": 1}, "flags": 3, "palette": "installed", "passes": 2,
      "changed_blocks": 2, "unread_bytes": 2, "failure": null})");
  expected["bytes"] = fFirst.Build().size();
  expected["palette_bytes"] = fFirst.palette->size();
  for (const auto& kind : objects[0]["records"].items()) {
    expected["records"][kind.key()] = {{"count", 0}, {"bytes", 0}};
  }
  expected["records"]["direct"] = {{"count", 2}, {"bytes", 2 * kDirectRecord.Build().size()}};
  expected["records"]["empty"] = {{"count", 2}, {"bytes", 4}};
  EXPECT_EQ(objects[0], expected);
  EXPECT_EQ(objects[1]["decoded"], true);
  EXPECT_EQ(objects[2]["failure"]["column"], 1);
}

TEST_F(InfoTest, WritesAPageWithPictures) {
  Run("head -c 3000 /dev/zero >>'<b>.zvm'");
  EXPECT_EQ(Run("zlibvideo info --html page.html '<b>.zvm'").status, 2);
  const std::string page = ReadFile("page.html");
  const std::size_t start = page.find('{', page.find("id=\"stream\""));
  const Json messages =
      Json::parse(page.substr(start, page.find("</script>", start) - start))["messages"];
  EXPECT_EQ(page.find("<b>.zvm"), std::string::npos);
  EXPECT_EQ(messages.size(), 4u) << "zeros are one entry";
  EXPECT_EQ(messages[0]["picture"].get<std::string>().find("data:image/png;base64,iVBOR"), 0u);
  EXPECT_EQ(messages[1]["blocks"]["cells"].dump(), R"([[1,4,"17 B, 1 row from row 3"]])");
  EXPECT_EQ(messages[2]["picture"], nullptr) << "as before";
  const Outcome bare = Run("zlibvideo info --picture-limit 0 --html x.html '<b>.zvm'");
  EXPECT_NE(bare.text.find("x.html: pictures from message 1 on are left out"), std::string::npos);
}

}  // namespace
}  // namespace zlibvideo
