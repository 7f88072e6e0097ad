#include <png.h>
#include <webp/demux.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <sstream>

#include "tests/GoodStream.h"
#include "tests/tool/ToolFixture.h"
#include "tools/pictures/Bt709.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {
namespace {

/// good.zvm is the good stream: pictures of 40x24, the last picture of another size.
/// bad.zvm is an empty message, the first step, the second cut short, the second.
class DecodeTest : public ToolFixture {
 protected:
  DecodeTest() {
    std::vector<Bytes> good;
    for (const Step& step : fSteps) good.push_back(step.message);
    Save("good.zvm", good);
    Save("bad.zvm", {{}, good[0], Bytes(good[1].begin(), good[1].end() - 1), good[1]});
  }
  void Save(const std::string& name, const std::vector<Bytes>& messages) const {
    MessageFileWriter writer(Path(name));
    for (const Bytes& message : messages) writer.Write(message.data(), message.size());
    writer.Commit();
  }
  std::string Bitmaps(std::size_t first, std::size_t end) const {
    std::string all;
    for (; first < end; ++first)
      all.append(fSteps[first].bitmap.bytes.begin(), fSteps[first].bitmap.bytes.end());
    return all;
  }
  std::string Crc(std::size_t step) const {
    const Bytes& bitmap = fSteps[step].bitmap.bytes;
    char digits[9] = "";
    std::snprintf(digits, sizeof(digits), "%08lx", crc32_z(0, bitmap.data(), bitmap.size()));
    return digits;
  }
  /// The PNG file must show the picture of the step.
  void ExpectPng(const std::string& name, std::size_t step) const {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, Path(name).c_str())) << name;
    image.format = PNG_FORMAT_BGRA;
    Bytes pixels(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << name;
    EXPECT_TRUE(SamePixels(fSteps[step].bitmap, {static_cast<int>(image.width), pixels})) << name;
  }

  const std::vector<Step> fSteps = GoodStream();
  const std::size_t fAll = fSteps.size();
};

std::ptrdiff_t Lines(const std::string& text) {
  return std::count(text.begin(), text.end(), '\n');
}

TEST_F(DecodeTest, RawPicturesComeThroughFilesAndPipes) {
  const std::string last = std::to_string(fAll);
  const Outcome ended = Run("zlibvideo decode good.zvm -o new/folder/all.bgra");
  EXPECT_EQ(2, ended.status) << "the size changes";
  EXPECT_NE(std::string::npos, ended.text.find("40x24 to 33x20")) << ended.text;
  EXPECT_NE(std::string::npos, ended.text.find("with --from " + last + " -o OTHER")) << ended.text;
  EXPECT_TRUE(SameBytes(Bitmaps(0, fAll - 1), ReadFile("new/folder/all.bgra")));
  EXPECT_EQ("", Run("zlibvideo decode good.zvm -o rest.raw --from " + last).text);
  EXPECT_TRUE(SameBytes(Bitmaps(fAll - 1, fAll), ReadFile("rest.raw")));
  EXPECT_TRUE(SameBytes(Bitmaps(0, 2),
                        Run("zlibvideo decode - --format bgra -o - --to 2 < good.zvm").text));
  const Outcome range =
      Run("head -c -1 good.zvm | zlibvideo decode - --format bgra -o - --from 2 --to 3");
  EXPECT_TRUE(SameBytes(Bitmaps(1, 3), range.text)) << "what comes after the range counts";
}

TEST_F(DecodeTest, RangesBeginAtAMessageThatStandsAlone) {
  std::vector<Bytes> messages = {{}};  // fails: told if it is decoded
  for (const Step& step : fSteps) messages.push_back(step.message);
  Save("whole.zvm", messages);
  messages[3].back() ^= 1;  // the message that stands alone
  Save("damaged.zvm", messages);
  const std::string range = " --from 6 --to 6 --format bgra -o -";
  EXPECT_TRUE(SameBytes(Bitmaps(4, 5), Run("zlibvideo decode whole.zvm" + range).text));
  const std::string told = "zlibvideo: standard input: message 1 at byte 3: it is empty";
  EXPECT_EQ(0u, Run("cat whole.zvm | zlibvideo decode -" + range).text.find(told));
  EXPECT_EQ(0u, Run("zlibvideo decode - < damaged.zvm" + range).text.find(told));
  const std::string rest = "(dd of=x bs=3 count=1 status=none; zlibvideo decode - " +
                           std::string("--from 5 --to 5 --format bgra -o -) < whole.zvm");
  EXPECT_TRUE(SameBytes(Bitmaps(4, 5), Run(rest).text));
}

TEST_F(DecodeTest, OutputGoesWhereItsNameLeads) {
  Run("mkdir new; touch new/x.bgra; chmod 602 new/x.bgra; ln -s new/x.bgra link.bgra");
  EXPECT_EQ("602\n", Run("zlibvideo decode good.zvm -o link.bgra --to 2 && stat -c %a new/x.bgra "
                         "&& test -L link.bgra")
                         .text);
  EXPECT_TRUE(SameBytes(Bitmaps(0, 2), ReadFile("new/x.bgra")));
}

TEST_F(DecodeTest, PngFilesAreNumberedByMessage) {
  const Outcome outcome = Run("zlibvideo decode bad.zvm -o out/%03d.png");
  EXPECT_EQ(2, outcome.status);
  const std::string offset = std::to_string(3 * 3 + fSteps[0].message.size());
  const std::string line = "zlibvideo: bad.zvm: message ";
  EXPECT_EQ(0u, outcome.text.find(line + "1 at byte 3: it is empty"));
  EXPECT_NE(std::string::npos, outcome.text.find('\n' + line + "3 at byte " + offset + ": block "));
  EXPECT_EQ((std::set<std::string>{"bad.zvm", "good.zvm", "out/002.png", "out/004.png"}), Files());
  ExpectPng("out/002.png", 0);
  ExpectPng("out/004.png", 1);
  EXPECT_EQ(0, Run("zlibvideo decode good.zvm -o 100%%d/ --to 1").status);
  ExpectPng("100%d/0001.png", 0);
  EXPECT_EQ(1, Run("zlibvideo decode good.zvm -o one.png").status) << "one name for all pictures";
  ExpectPng("one.png", 0);
}

TEST_F(DecodeTest, HashLinesAreListedAndVerified) {
  const Outcome list = Run("zlibvideo decode bad.zvm --format hash 2>/dev/null | tee bad.hashes");
  const std::string first = " 40x24 " + Crc(0), last = "3 1 40x24 " + Crc(1);
  EXPECT_EQ("0 0 0x0 00000000\n1 1" + first + "\n2 0" + first + "\n" + last + "\n", list.text);
  EXPECT_EQ(
      0,
      Run("out=$(zlibvideo decode bad.zvm --verify bad.hashes 2>&1) && test -z \"$out\"").status);
  const std::pair<std::string, std::string> changes[] = {
      {"sed 's/ 1 40/ 0 40/'", "2 of 4 messages differ\n"},
      {"head -n 3", "1 of 4 messages differs\n"},
      {"sed 4p", "0 of 4 messages differ; the list has 1 line too many\n"}};
  for (const auto& [change, result] : changes) {
    const Outcome outcome = Run(change + " bad.hashes | zlibvideo decode bad.zvm --verify -");
    EXPECT_EQ(3, outcome.status) << change;
    EXPECT_TRUE(outcome.text.ends_with("zlibvideo: standard input: " + result)) << outcome.text;
    EXPECT_EQ(result.front() == '0' ? 1 : 2, Lines(outcome.text))
        << "the first difference is shown";
  }
}

TEST_F(DecodeTest, WholeMessagesOfACutFileAreRead) {
  Save("small.zvm", {{1, 2, 3}, {}, {4}});
  const std::string file = ReadFile("small.zvm");
  for (std::size_t size = 0; size <= file.size(); ++size) {
    std::ofstream(Path("cut.zvm"), std::ios::binary) << file.substr(0, size);
    MessageFileReader reader(Path("cut.zvm"));
    FileMessage message;
    auto result = reader.Next(&message);
    while (result == MessageFileReader::Result::kMessage) result = reader.Next(&message);
    EXPECT_EQ(size < 6 ? 0u : size < 9 ? 1u : size < 13 ? 2u : 3u, reader.MessageCount());
    const bool whole = size == 0 || size == 6 || size == 9 || size == 13;
    EXPECT_EQ(whole, result == MessageFileReader::Result::kEnd) << size;
    const std::string place = "early at byte " + std::to_string(size) + ":";
    EXPECT_NE(whole, reader.Problem().find(place) != std::string::npos);
  }
}

TEST_F(DecodeTest, RefusesWhatCannotBeDoneAndLeavesNoFile) {
  Run("touch ./-v.zvm empty.zvm; ln good.zvm 1.png; ln good.zvm x.zvm; echo kept > y.bgra.part");
  const std::string decode = "zlibvideo decode good.zvm ";
  const std::string full = "standard output: cannot be written: No space left on device\n";
  const std::string input = ": is also the input; ", percent = " may have a single number, as %d, ";
  std::vector<Refusal> refusals = {
      {decode + "-o %d%d.png", "-o: \"%d%d.png\"" + percent},
      {decode + "-o %s.png", "-o: \"%s.png\"" + percent},
      {decode + "-o x.gif", "-o: \"x.gif\" has an extension that is not written; choose .png, "},
      {decode + "-o %04d.bgra", "-o: \"%04d.bgra\" has a picture number, which only png supports"},
      {decode + "-o x.null", "-o: \"x.null\" cannot be used: format null writes no file"},
      {decode + "--format jpg", "--format: jpg not in {png,bgra,"},
      {decode + "-o x.png --from 0", "--from: \"0\" is not a whole number, 1 or more\nRun \"zlib"},
      {decode + "-o x.png --to 1x", "--to: \"1x\" is not a whole number"},
      {decode + "-o x.webp --fps 1/0", "--fps: \"1/0\" is not a frame rate"},
      {decode + "-o x.hash --fps 5", "--fps: \"5\" is only for webp and y4m"},
      {decode + "-o /dev/full --format webp", "/dev/full: cannot be written: No space left on "},
      {decode + "-o good.zvm/x.y4m", "good.zvm/x.y4m: its folder cannot be created: "},
      {decode + "-o y.bgra", Path("y.bgra.part") + ": exists; "},
      {decode + "--verify good.zvm", "good.zvm: is not a list written by --format hash"},
      {"zlibvideo decode /proc/self/mem --format null", "/proc/self/mem: cannot be read: "},
      {decode + "--format hash > /dev/full", full},
      {decode + "--format webp -o x.zvm", "x.zvm" + input},
      {decode + "--format hash >> x.zvm", "standard output" + input},
      {"zlibvideo decode - --format bgra -o x.zvm < good.zvm", "x.zvm" + input},
      {"zlibvideo decode 1.png -o %d.png", "1.png" + input},
      {"zlibvideo decode empty.zvm -o x.hash", "empty.zvm: is empty\n"},
      {"zlibvideo decode . -o x.png", ".: is a directory"},
      {"zlibvideo decode no.zvm -o x.png", "no.zvm: cannot be opened: No such file or directory\n"},
      {"head -c 9 good.zvm | zlibvideo decode - -o x.png",
       "standard input: ends early at byte 9: "},
      {"ulimit -f 1; " + decode + "-o x.bgra", "x.bgra: cannot be written: File too large\n"},
      {"zlibvideo info - --html x.zvm < good.zvm", "x.zvm" + input},
      {"zlibvideo info --help > /dev/full", full},
      {"printf '\\211PNG' | zlibvideo info -",
       "standard input: is a PNG file, not a message file; "},
      {"printf YUV4MPEG2 | zlibvideo info -", "standard input: is y4m, not a message file; "},
      {"printf RIFF | zlibvideo info -", "standard input: is WebP, not a message file; "},
      {"zlibvideo info ''", "IN.zvm: the name is empty"},
      {"zlibvideo info -v.zvm", "IN.zvm is required; for the file -v.zvm write ./-v.zvm\n"},
      {"zlibvideo -v good.zvm", "\"good.zvm\" is not a command; commands are decode, "}};
  for (const std::string format : {"png", "bgra", "hash", "webp", "y4m"}) {
    refusals.push_back({decode + "--from 100 -o x --format " + format,
                        "--from 100: good.zvm has only " + std::to_string(fAll) + " messages\n"});
  }
  ExpectRefusals(refusals);
}

TEST_F(DecodeTest, ASignalLeavesNoUnfinishedFile) {
  const std::set<std::string> before = Files();
  const Outcome stopped =
      Run("mkfifo in; '" ZLIBVIDEO_PROGRAM
          "' decode in -o x.hash & pid=$!; exec 3>in; cat good.zvm >&3; while ! test -e "
          "x.hash.part; do "
          "sleep 0.01; done; kill -TERM $pid; wait $pid; status=$?; rm in; exit $status");
  EXPECT_EQ(128 + SIGTERM, stopped.status);
  EXPECT_EQ(0u, stopped.text.find("zlibvideo: stopped by a signal\n"));
  EXPECT_EQ(before, Files());
}

TEST_F(DecodeTest, ASignalEndsAWaitForTheReader) {
  EXPECT_EQ(124, Run("mkfifo out; exec 3<>out; for i in $(seq 999); do cat good.zvm; done > x.zvm; "
                     "timeout -k 9 0.5 '" ZLIBVIDEO_PROGRAM "' info --json x.zvm > out")
                     .status)
      << "the status of timeout, if the first signal ended the program";
}

TEST_F(DecodeTest, ManyFailuresAreFewLines) {
  std::vector<Bytes> messages;
  for (std::size_t i = 0; i < 30; ++i) messages.push_back(Bytes(i % 2, 9));
  messages.push_back(fSteps[0].message);
  messages.push_back({9});
  Save("x.zvm", messages);
  const auto end = std::to_string(std::filesystem::file_size(Path("x.zvm")));
  const Outcome outcome =
      Run("head -c 65539 /dev/zero >> x.zvm; zlibvideo decode x.zvm --format null");
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(20 + 3, Lines(outcome.text)) << outcome.text;
  EXPECT_NE(std::string::npos,
            outcome.text.find("x.zvm: 10 more messages failed\nzlibvideo: x.zvm: message 32 at "));
  const std::string zeros = "x.zvm: messages 33 to 21878, from byte " + end + " on, are empty\n";
  EXPECT_TRUE(outcome.text.ends_with(zeros)) << outcome.text;
}

TEST(Bt709Test, EveryColourSurvivesInTenBits) {
  using Ten = Bt709<10>;
  // Red by the definition: Y = 64 + 876 x 0.2126, Cb = 512 - 896 x 0.2126 / 1.8556.
  const Ten::YCbCr red = Ten::FromRgb({255, 0, 0});
  EXPECT_EQ((std::array<int, 3>{red.y, red.cb, red.cr}), (std::array{250, 409, 960}));
  for (int rgb = 0; rgb < 1 << 24; ++rgb) {
    const Ten::Rgb colour = {rgb >> 16, rgb >> 8 & 255, rgb & 255};
    if (Ten::ToRgb(Ten::FromRgb(colour)) != colour) FAIL() << std::hex << rgb;
  }
}

TEST_F(DecodeTest, Y4mNamesSizeRateAndColours) {
  EXPECT_EQ(2, Run("zlibvideo decode good.zvm -o x.y4m --fps 29.97").status) << "the size changes";
  const std::string movie = ReadFile("x.y4m");
  const std::string header =
      "YUV4MPEG2 W40 H24 F2997:100 Ip A1:1 C444p10 XYSCSS=444P10 XCOLORRANGE=LIMITED\nFRAME\n";
  EXPECT_EQ(header, movie.substr(0, header.size()));
  EXPECT_TRUE(
      SameBytes(Bitmaps(0, fAll - 1),
                Run("zlibvideo record x.y4m -o - | zlibvideo decode - --format bgra -o -").text));
}

TEST_F(DecodeTest, WebpIsAnExactAnimation) {
  EXPECT_EQ(2, Run("zlibvideo decode good.zvm -o x.webp --fps 8").status);
  const std::string movie = ReadFile("x.webp");
  const WebPData data = {reinterpret_cast<const std::uint8_t*>(movie.data()), movie.size()};
  WebPAnimDecoderOptions options;
  ASSERT_TRUE(WebPAnimDecoderOptionsInit(&options));
  options.color_mode = MODE_BGRA;
  const std::unique_ptr<WebPAnimDecoder, void (*)(WebPAnimDecoder*)> decoder(
      WebPAnimDecoderNew(&data, &options), WebPAnimDecoderDelete);
  std::string bitmaps;
  std::uint8_t* pixels = nullptr;
  for (int end = 0, begin = 0; WebPAnimDecoderGetNext(decoder.get(), &pixels, &end) != 0;
       begin = end) {
    EXPECT_EQ(125, end - begin);
    bitmaps.append(reinterpret_cast<char*>(pixels), 40 * 24 * 4);
  }
  EXPECT_TRUE(SameBytes(Bitmaps(0, fAll - 1), bitmaps));
}

TEST_F(DecodeTest, BashCompletesCommandsAndFormats) {
  const auto offered = [this](const std::string& words) {
    return Run("bash -c 'source \"" ZLIBVIDEO_COMPLETION "\"; COMP_WORDS=(\"" ZLIBVIDEO_PROGRAM
               "\" " +
               words +
               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zlibvideo; echo \"${COMPREPLY[*]}\"'")
        .text;
  };
  EXPECT_EQ(0u, offered("\"\"").find("decode record info ")) << offered("\"\"");
  EXPECT_EQ("png bgra hash null webp y4m\n", offered("decode --format \"\""));
}

}  // namespace
}  // namespace zlibvideo
