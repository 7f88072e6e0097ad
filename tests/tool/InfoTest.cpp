#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/StreamBuilder.h"
#include "tests/tool/ToolFixture.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {
namespace {

using namespace formats;

using Json = nlohmann::json;

// Two blocks of 16x16: 768 bytes of pixels each in a room of 848 bytes; the scratch buffer has
// 1024.
const Record kEmpty = {};
const Bytes kNoise = Noise(2048, 1);

Record Direct(std::size_t bytes, int format = kDirect) {
  return {.format = format, .payload = Zlib({kNoise.data(), kNoise.data() + bytes})};
}
Record Banded(int start, int rows) {
  return {.format = kBanded, .band = Band{start, rows}, .payload = Zlib(Bytes(48, 0x55))};
}
Message V2(const std::vector<Record>& records, unsigned int flags = 0, const Bytes& rest = {}) {
  return {Header(kCodecTypeVersion2, 32, 16, 16, 16), flags, {}, records, rest};
}

/// A stream with a name that a page must not take for markup; its last message fails.
class InfoTest : public ToolFixture {
 protected:
  InfoTest() {
    fFirst.palette = Zlib(Bytes(384));
    MessageFileWriter writer(Path("<b>.zvm"));
    for (const Message& message : {fFirst, V2({kEmpty, Banded(3, 1)}), V2({kEmpty, Direct(849)})}) {
      const Bytes bytes = message.Build();
      writer.Write(bytes.data(), bytes.size());
    }
    writer.Commit();
  }

  Message fFirst = V2({Direct(768), Direct(768), kEmpty, kEmpty}, kFlagSecondPass, {7, 7});
};

TEST_F(InfoTest, MapsBlocksAndTellsFailures) {
  const Outcome text = Run("zlibvideo info --map '<b>.zvm'");
  for (const char* part : {" 50.0 %  .#\n        .B\n", "        .!\n", "+ 2 messages decoded",
                           "0.0 %  ..\n        ! block 0,1: "}) {
    EXPECT_NE(text.text.find(part), std::string::npos) << part << "\n" << text.text;
  }
  const Outcome failed = Run("printf '\\0\\0\\1x' | zlibvideo info -");
  EXPECT_NE(failed.text.find("! 1 message failed\n"), std::string::npos) << failed.text;
  EXPECT_EQ(failed.text.find("records"), std::string::npos) << failed.text;
}

TEST_F(InfoTest, TellsThatTheStreamEndsEarlyAndPrintsNoControlCharacters) {
  EXPECT_EQ(Run("zlibvideo info '<b>.zvm' | LC_ALL=C grep -c '[^ -~]'").text, "0\n");
  const std::string hostile = "'\x1B[7m\n\xC2\x9B'";
  const Outcome cut =
      Run("head -c -1 '<b>.zvm' >" + hostile + "; zlibvideo info " + hostile + "; rm *7*");
  EXPECT_NE(cut.text.find("! ?[7m??: ends early at byte"), std::string::npos) << cut.text;
  EXPECT_EQ(cut.text.find_first_of("\x1B\x9B"), std::string::npos);
  const Outcome full = Run("head -c -1 '<b>.zvm' | zlibvideo info - > /dev/full");
  EXPECT_EQ(full.text.find("zlibvideo: standard input: ends early"), 0u) << full.text;
}

TEST_F(InfoTest, MakesNoReportWithoutAMessage) {
  for (const std::string form : {"-", "- --json", "- --html -", "- --html empty.html"}) {
    SCOPED_TRACE(form);
    EXPECT_EQ(Run("zlibvideo info < /dev/null " + form + "; echo $?; ls").text,
              "zlibvideo: standard input: is empty\n1\n<b>.zvm\n");
    EXPECT_EQ(Run("printf '\\0\\0' | zlibvideo info " + form + "; echo $?; ls").text,
              "zlibvideo: standard input: ends early at byte 2: 1 more byte belongs to the length "
              "of message 1; it may not be a message file\n1\n<b>.zvm\n");
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
  expected["records"]["direct"] = {{"count", 2}, {"bytes", 2 * Direct(768).Build().size()}};
  expected["records"]["empty"] = {{"count", 2}, {"bytes", 4}};
  EXPECT_EQ(objects[0], expected);
  EXPECT_EQ(objects[1]["decoded"], true);
  EXPECT_EQ(objects[2]["decoded"], false);
}

TEST_F(InfoTest, WritesAPageWithWhatEachMessageChanged) {
  EXPECT_EQ(Run("zlibvideo info --html page.html '<b>.zvm'").status, 2);
  const std::string page = ReadFile("page.html");
  const std::size_t start = page.find('[', page.find("id=\"messages\""));
  Json messages = Json::parse(page.substr(start, page.find("</script>", start) - start));
  EXPECT_EQ(page.find("<b>.zvm"), std::string::npos);
  EXPECT_EQ(messages[0]["patch"]["whole"], true);
  messages[1]["patch"].erase("src");
  EXPECT_EQ(messages[1]["patch"].dump(), R"({"height":1,"whole":false,"width":16,"x":16,"y":12})");
  EXPECT_EQ(messages[1]["cells"].dump(),
            "[[1,4," + std::to_string(Banded(3, 1).Build().size()) + ",1,3,1]]");
  const Outcome bare = Run("zlibvideo info --picture-limit 0 --html - '<b>.zvm'");
  EXPECT_NE(bare.text.find("\"patch\":\"omitted\""), std::string::npos);
}

TEST_F(InfoTest, DrawsNoBarIntoAPageOnTheTerminal) {
  const Outcome screen =
      Run("mkfifo in; { cat *.zvm; sleep 0.2; cat *.zvm; } >in & "
          "script -qec \"'" ZLIBVIDEO_PROGRAM "' info in --html -\" /dev/null");
  EXPECT_EQ(screen.text.find("\x1B[K"), screen.text.rfind("\x1B[K"));
}

}  // namespace
}  // namespace zlibvideo
