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

BitmapPixels PngPixels(const Bytes& file) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) return {};
  image.format = PNG_FORMAT_BGRA;
  Bytes pixels(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0) return {};
  return {static_cast<int>(image.width), pixels};
}

/// good.zvm is the good stream: pictures of 40x24 and a last one of another size.
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
    std::ostringstream digits;
    const Bytes& bitmap = fSteps[step].bitmap.bytes;
    digits << std::hex << crc32_z(0, bitmap.data(), bitmap.size());
    const std::string text = digits.str();
    return std::string(8 - text.size(), '0') + text;
  }
  BitmapPixels PngFilePixels(const std::string& name) const {
    const std::string file = ReadFile(name);
    return PngPixels({file.begin(), file.end()});
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
  const Outcome png = Run("mkdir ./-; zlibvideo decode good.zvm --to 1 --format png -o -");
  EXPECT_EQ(1u, png.text.find("PNG")) << "a folder named - is not meant";
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
  const Outcome taken = Run("echo kept > y.bgra.part; zlibvideo decode good.zvm -o y.bgra");
  EXPECT_EQ(1, taken.status);
  EXPECT_NE(std::string::npos, taken.text.find("y.bgra.part: exists; ")) << taken.text;
  EXPECT_EQ("kept\n", ReadFile("y.bgra.part"));
}

TEST_F(DecodeTest, PngFilesAreNumberedByMessage) {
  const Outcome outcome = Run("zlibvideo decode bad.zvm -o out/%03d.png");
  EXPECT_EQ(2, outcome.status);
  const std::string offset = std::to_string(3 * 3 + fSteps[0].message.size());
  const std::string line = "zlibvideo: bad.zvm: message ";
  EXPECT_EQ(0u, outcome.text.find(line + "1 at byte 3: it is empty"));
  EXPECT_NE(std::string::npos, outcome.text.find('\n' + line + "3 at byte " + offset + ": block "));
  EXPECT_EQ((std::set<std::string>{"bad.zvm", "good.zvm", "out/002.png", "out/004.png"}), Files());
  EXPECT_TRUE(SamePixels(fSteps[0].bitmap, PngFilePixels("out/002.png")));
  EXPECT_TRUE(SamePixels(fSteps[1].bitmap, PngFilePixels("out/004.png")));
  EXPECT_EQ(0, Run("zlibvideo decode good.zvm -o 100%%d/ --to 1").status);
  EXPECT_TRUE(SamePixels(fSteps[0].bitmap, PngFilePixels("100%d/0001.png")));
  EXPECT_EQ(1, Run("zlibvideo decode good.zvm -o one.png").status) << "one name for all pictures";
  EXPECT_TRUE(SamePixels(fSteps[0].bitmap, PngFilePixels("one.png")));
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
  const Outcome cut = Run("head -c -1 bad.zvm | zlibvideo decode - --verify bad.hashes");
  EXPECT_EQ(3, cut.status);
  EXPECT_EQ(0u, cut.text.find("zlibvideo: standard input: ends early at byte ")) << cut.text;
  EXPECT_NE(std::string::npos,
            cut.text.find("\nzlibvideo: bad.hashes: 0 of 3 messages differ; the list has 1 line "));
  EXPECT_EQ(1, Run("zlibvideo decode /proc/self/mem --verify bad.hashes").status) << "read error";
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
  EXPECT_EQ(2, Run("head -c -1 good.zvm | zlibvideo decode - -o all.bgra").status);
  EXPECT_TRUE(SameBytes(Bitmaps(0, fAll - 1), ReadFile("all.bgra")));
}

TEST_F(DecodeTest, RangeBehindTheStreamIsAnError) {
  const std::string line = "zlibvideo: --from 100: good.zvm has only " + std::to_string(fAll);
  for (const std::string format : {"png", "bgra", "hash", "null", "webp", "y4m"}) {
    const std::string output = format == "null" ? "" : " -o x";
    const Outcome outcome = Run("zlibvideo decode good.zvm --from 100 --format " + format + output);
    EXPECT_EQ(1, outcome.status) << format;
    EXPECT_EQ(line + " messages\n", outcome.text) << format;
    EXPECT_EQ((std::set<std::string>{"bad.zvm", "good.zvm"}), Files()) << format;
  }
}

TEST_F(DecodeTest, WhatCannotRunSaysSoInOneLineAndLeavesNoFile) {
  Run(": > empty.zvm");
  const std::set<std::string> before = Files();
  for (const char* script :
       {"zlibvideo decode empty.zvm -o x.hash", "zlibvideo decode . -o x.png",
        "head -c 9 good.zvm | zlibvideo decode - -o x.png", "zlibvideo decode no.zvm -o x.png",
        "zlibvideo decode good.zvm -o /dev/full --format webp",
        "zlibvideo decode good.zvm -o good.zvm/x.y4m",
        "zlibvideo decode good.zvm -o /proc/x/%d.png",
        "zlibvideo decode good.zvm --format hash > /dev/full",
        "zlibvideo decode good.zvm --verify good.zvm", "zlibvideo info --help > /dev/full",
        "zlibvideo --version > /dev/full", "ulimit -f 1; zlibvideo decode good.zvm -o x.bgra"}) {
    const Outcome outcome = Run(script);
    EXPECT_EQ(1, outcome.status) << script;
    EXPECT_EQ(1, Lines(outcome.text)) << script << outcome.text;
    EXPECT_EQ(before, Files()) << script;
  }
}

TEST_F(DecodeTest, InputIsNeverReplaced) {
  Run("for name in 2.png x.zvm; do ln good.zvm $name; done");
  const std::string input = ReadFile("good.zvm");
  for (const char* script :
       {"zlibvideo decode good.zvm --format webp -o x.zvm", "zlibvideo decode 2.png -o %d.png",
        "zlibvideo info - --html x.zvm < good.zvm",
        "zlibvideo decode - --format bgra -o x.zvm < good.zvm",
        "zlibvideo decode good.zvm --format hash >> x.zvm"}) {
    const Outcome outcome = Run(script);
    EXPECT_EQ(1, outcome.status) << script;
    EXPECT_NE(std::string::npos, outcome.text.find(": is also the input; ")) << outcome.text;
  }
  for (const char* name : {"good.zvm", "2.png", "x.zvm"})
    EXPECT_TRUE(SameBytes(input, ReadFile(name))) << name;
}

TEST_F(DecodeTest, AReaderThatLeavesEndsTheProgramQuietly) {
  Run("for i in 1 2 3 4 5 6 7 8 9; do cat good.zvm >> long.zvm; done");
  for (const char* arguments :
       {"decode long.zvm --format bgra -o /dev/stdout", "info --json long.zvm",
        "info --html - long.zvm", "record --help"}) {
    const Outcome outcome =
        Run("mkfifo gone; { { read x <gone; zlibvideo " + std::string(arguments) +
            "; echo $? >&3; } | { exec <&-; echo >gone; }; } 3>&1; rm gone");
    EXPECT_EQ("1\n", outcome.text) << arguments;
  }
}

TEST_F(DecodeTest, HashLinesComeAsMessagesAreDecoded) {
  const Outcome live =
      Run("mkfifo in; { cat bad.zvm; read x <in; } | zlibvideo decode - --format hash 2>&- | "
          "{ timeout 9 head -n 4; echo >in; }; rm in");
  EXPECT_EQ(4, Lines(live.text)) << live.text;
}

TEST_F(DecodeTest, ASignalLeavesNoUnfinishedFile) {
  const std::set<std::string> before = Files();
  const auto decodeLive = [this](const std::string& setUp, const std::string& end) {
    return Run(setUp +
               "mkfifo in; '" ZLIBVIDEO_PROGRAM
               "' decode in -o x.hash & pid=$!; exec 3>in; cat good.zvm >&3; while ! test -e "
               "x.hash.part; do sleep 0.01; done; " +
               end + "; wait $pid; status=$?; rm in; exit $status");
  };
  const Outcome stopped = decodeLive("", "kill -TERM $pid");
  EXPECT_EQ(128 + SIGTERM, stopped.status);
  EXPECT_EQ(0u, stopped.text.find("zlibvideo: stopped by a signal; no unfinished file is left\n"));
  EXPECT_EQ(before, Files());
  EXPECT_EQ(0, decodeLive("trap '' HUP; ", "kill -HUP $pid; exec 3>&-").status) << "as by nohup";
  EXPECT_EQ(static_cast<std::ptrdiff_t>(fAll), Lines(ReadFile("x.hash")));
}

TEST_F(DecodeTest, ManyFailuresAreFewLines) {
  std::vector<Bytes> messages;
  for (std::size_t i = 0; i < 30; ++i) messages.push_back(Bytes(i % 2, 9));
  messages.push_back(fSteps[0].message);
  Save("x.zvm", messages);
  const auto end = std::to_string(std::filesystem::file_size(Path("x.zvm")));
  const Outcome outcome =
      Run("head -c 65538 /dev/zero >> x.zvm; zlibvideo decode x.zvm --format null");
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(20 + 2, Lines(outcome.text)) << "different failures, and zeros: " << outcome.text;
  EXPECT_TRUE(
      outcome.text.ends_with("x.zvm: 10 more messages failed\nzlibvideo: x.zvm: messages "
                             "32 to 21877, from byte " +
                             end + " on, are empty\n"))
      << outcome.text;
  for (const char* start : {"\\211PNG", "YUV4MPEG2 W1", "RIFF"}) {
    const Outcome other = Run(std::string("printf '") + start + "' | zlibvideo info -");
    EXPECT_EQ(1, other.status);
    EXPECT_NE(std::string::npos, other.text.find("not a message file; ")) << other.text;
  }
}

TEST_F(DecodeTest, UsageErrorsNameTheValue) {
  for (const std::string arguments :
       {"-o %d%d.png", "-o %s.png", "-o x%n.png", "-o %123d.png", "-o x.gif", "--format jpg",
        "-o x.png --from 0", "-o x.png --to 1x", "-o x.webp --fps 1/0", "-o x.y4m --fps 1001",
        "-o x.hash --fps 5", "-o %04d.bgra", "-o a%d.webp", "--format null -o x", "-o x.null"}) {
    const Outcome outcome = Run("zlibvideo decode good.zvm " + arguments);
    EXPECT_EQ(1, outcome.status) << arguments;
    EXPECT_NE(std::string::npos, outcome.text.find(arguments.substr(arguments.rfind(' ') + 1)))
        << arguments;
  }
  EXPECT_EQ((std::set<std::string>{"bad.zvm", "good.zvm"}), Files());
}

TEST_F(DecodeTest, UsageErrorsAreInTheProgramsOwnWords) {
  const std::pair<const char*, const char*> mistakes[] = {
      {"info ''", "IN.zvm: the name is empty"},
      {"-v good.zvm",
       "\"good.zvm\" is not a command; commands are decode, record and info; to see what is in a "
       "stream: zlibvideo info good.zvm"},
      {"info -v.zvm", "IN.zvm is required; for the file -v.zvm write ./-v.zvm"},
      {"decode good.zvm --from", "--from needs a value"},
      {"decode good.zvm --from 0", "--from: \"0\" is not a whole number, 1 or more"},
      {"record x.png", "an output is required: -o FILE, or \"-o -\" for standard output"},
      {"record x.png -o x --level 010", "--level: \"010\" is not a whole number from 0 to 9"},
      {"record x.png -o x --renew 1001", "--renew: \"1001\" is not a whole number from 0 to 1000"}};
  Run("touch ./-v.zvm");
  for (const auto& [arguments, complaint] : mistakes) {
    const Outcome outcome = Run(std::string("zlibvideo ") + arguments);
    EXPECT_EQ(0u, outcome.text.find(std::string("zlibvideo: ") + complaint + "\nRun \"zlibvideo"))
        << outcome.text;
  }
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

TEST_F(DecodeTest, Y4mHoldsEveryColourInPlanes) {
  EXPECT_EQ(2, Run("zlibvideo decode good.zvm -o x.y4m --fps 29.97").status);
  std::istringstream movie(ReadFile("x.y4m"));
  std::string line, bitmaps;
  std::getline(movie, line);
  EXPECT_EQ("YUV4MPEG2 W40 H24 F2997:100 Ip A1:1 C444p10 XYSCSS=444P10 XCOLORRANGE=LIMITED", line);
  while (std::getline(movie, line) && line == "FRAME") {
    unsigned char planes[3][40 * 24][2] = {};
    movie.read(reinterpret_cast<char*>(planes), sizeof(planes));
    for (std::size_t i = 0; i < 40 * 24; ++i) {
      const auto sample = [&](int plane) { return planes[plane][i][0] | planes[plane][i][1] << 8; };
      const auto rgb = Bt709<10>::ToRgb({sample(0), sample(1), sample(2)});
      for (const int c : {rgb.blue, rgb.green, rgb.red, 255}) bitmaps += static_cast<char>(c);
    }
  }
  EXPECT_TRUE(SameBytes(Bitmaps(0, fAll - 1), bitmaps));
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
