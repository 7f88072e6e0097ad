#include <csignal>

#include "tests/SameBytes.h"
#include "tests/StreamBuilder.h"
#include "tests/tool/ToolFixture.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/Y4mPictures.h"

namespace zlibvideo {
namespace {

constexpr std::size_t kPictures = 3, kPictureBytes = 40 * 30 * 4;

/// Raw pictures of 40x30 pixels are in in.bgra: noise and the extreme colours, with rubbish for
/// opacity. `fPixels` has the same pictures opaque.
class RecordStreamTest : public ToolFixture {
 protected:
  RecordStreamTest() {
    Bytes pixels = Noise(kPictures * kPictureBytes, 1);
    for (std::size_t i = 0; i < 1600; ++i) pixels[i] = pixels[i] < 0x80 ? 0 : 0xFF;
    fPixels.assign(pixels.begin(), pixels.end());
    std::ofstream(Path("in.bgra"), std::ios::binary) << fPixels;
    for (std::size_t i = 3; i < fPixels.size(); i += 4) fPixels[i] = '\xFF';
  }
  /// Whether x.zvm has the first `count` pictures, and removes it.
  testing::AssertionResult HasPictures(std::size_t count) const {
    const Outcome decoded = Run("zlibvideo decode x.zvm --format bgra -o - && rm x.zvm");
    return SameBytes(fPixels.substr(0, count * kPictureBytes), decoded.text);
  }
  /// Starts a recording of raw pictures from the pipe `in`, whose writer is descriptor 3, and runs
  /// `script`, which finds its process in $pid. Its status is that of the recording. `await` runs a
  /// command until it succeeds, for a minute at most. The pipe `full` takes no bytes.
  Outcome RecordLive(const std::string& output, const std::string& script) const {
    return Run(
        "await() { for i in $(seq 600); do \"$@\" >&5 && return; sleep 0.1; done; kill -9 $pid; }; "
        "exec 5>/dev/null; mkfifo in full; exec 4<>full; dd if=/dev/zero of=full oflag=nonblock "
        "2>&5;"
        " env --default-signal=INT '" ZLIBVIDEO_PROGRAM "' record in --size 40x30 -o " +
        output + " & pid=$!; exec 3>in; " + script +
        "; wait $pid; status=$?; rm in full; exit $status");
  }

  std::string fPixels;
};

TEST_F(RecordStreamTest, PicturesComeThroughEveryKindOfStream) {
  ASSERT_EQ("", Run("zlibvideo record in.bgra --size 40x30 -o first.zvm").text);
  for (const char* script :
       {"zlibvideo record in.bgra --size 40x30", "cat in.bgra | zlibvideo record - --size 40x30",
        "zlibvideo decode first.zvm --format y4m -o - | zlibvideo record -",
        "zlibvideo decode first.zvm --format png -o - > x.png; zlibvideo record x.png",
        "zlibvideo decode first.zvm --format png -o - | zlibvideo record - - -",
        "zlibvideo decode first.zvm --format y4m -o - | "
        "LC_ALL=C sed '1s/.*/YUV4MPEG2 C444p10 Xanything I? H30 W40/; s/^FRAME$/FRAME Ip/' | "
        "zlibvideo record /dev/stdin"}) {
    EXPECT_EQ("", Run(script + std::string(" -o x.zvm")).text);
    EXPECT_TRUE(HasPictures(kPictures)) << script;
  }
}

TEST_F(RecordStreamTest, SamplesGiveTheColoursThatAreNearest) {
  // Black, white, and red as rounded: Y = 63, Cb = 102, Cr = 240, of which green comes out as 0.58.
  // With 10 bits white, under rubbish in the bits that no sample has.
  const std::pair<std::string, Bytes> files[] = {
      {"YUV4MPEG2 W3 H1 C444\nFRAME\n\x10\xEB\x3F\x80\x80\x66\x80\x80\xF0",
       {0, 0, 0, 255, 255, 255, 255, 255, 0, 1, 255, 255}},
      {"YUV4MPEG2 W1 H1 C444p10\nFRAME\n" + std::string("\xAC\xFF\0\xFE\0\xFE", 6),
       {255, 255, 255, 255}}};
  for (const auto& [y4m, expected] : files) {
    std::ofstream(Path("x.y4m"), std::ios::binary) << y4m;
    const Outcome outcome =
        Run("zlibvideo record x.y4m -o - | zlibvideo decode - --format bgra -o -");
    EXPECT_TRUE(SameBytes(expected, outcome.text));
  }
}

TEST_F(RecordStreamTest, WholePicturesOfY4mThatIsCutOffAreRead) {
  const std::string header = "YUV4MPEG2 W2 H1 C444p10\n", frame = "FRAME\n" + std::string(12, '1');
  const std::string y4m = header + frame + frame;
  for (std::size_t size = 0; size <= y4m.size(); ++size) {
    std::ofstream(Path("cut"), std::ios::binary) << y4m.substr(0, size);
    Y4mPictures source(std::make_unique<InputFile>(Path("cut")));
    Picture picture;
    std::size_t count = 0;
    bool isCut = false;
    try {
      while (source.Next(&picture)) ++count;
    } catch (const ToolError&) {
      isCut = true;
    }
    EXPECT_EQ(count, size < header.size() ? 0 : (size - header.size()) / frame.size()) << size;
    EXPECT_EQ(isCut, count == 0 || size != header.size() + count * frame.size()) << size;
  }
}

TEST_F(RecordStreamTest, WhatCameBeforeAnErrorIsKept) {
  const std::string kept = "; 1 picture was recorded before this\n";
  const std::pair<const char*, std::string> errors[] = {
      {"head -c 4801 in.bgra | zlibvideo record - --size 40x30",
       "standard input: picture 2 is cut off: it has 1 of 4800 bytes"},
      {"{ zlibvideo decode first.zvm --format y4m --to 1 -o -; echo FRAMES; cat in.bgra; } | "
       "zlibvideo record -",
       "standard input: picture 2 does not begin with the line FRAME of y4m"},
      {"{ zlibvideo decode first.zvm --format png --to 1 -o -; cat in.bgra; } | zlibvideo record -",
       "standard input: picture 2: cannot be read as PNG: Not a PNG file"},
      {"ulimit -f 10; zlibvideo record in.bgra --size 40x30",
       "x.zvm: cannot be written: File too large"}};
  Run("zlibvideo record in.bgra --size 40x30 -o first.zvm");
  for (const auto& [script, complaint] : errors) {
    const Outcome outcome = Run(script + std::string(" -o x.zvm"));
    EXPECT_EQ(2, outcome.status) << script;
    EXPECT_EQ("zlibvideo: " + complaint + kept, outcome.text);
    EXPECT_TRUE(HasPictures(1)) << script;
  }
}

TEST_F(RecordStreamTest, OtherInputIsRefusedAndTheOutputLeftAlone) {
  Run("echo old > old.zvm; touch x.png");
  const std::string y4m = "printf 'YUV4MPEG2 W2 H2 %s\\nFRAME\\nabcdefghijkl' ";
  const std::string record = " | zlibvideo record -",
                    taken = " cannot be read: it must be 4:4:4 of ";
  std::vector<Refusal> refusals = {
      {y4m + "C420jpeg" + record, "standard input: y4m with \"C420jpeg\"" + taken},
      {y4m + "Ip" + record, "standard input: y4m with 4:2:0" + taken},
      {y4m + "'C444 It'" + record, "standard input: y4m with \"It\"" + taken},
      {y4m + "'C444 XCOLORRANGE=FULL'" + record, "standard input: y4m with \"XCOLORRANGE=FULL\""},
      {y4m + "'C444 W4096'" + record, "standard input: y4m with \"W4096\"" + taken},
      {y4m + "'C444 W99999999999999999999'" + record, "standard input: y4m with \"W9999"},
      {"echo YUV4MPEG2 H5 C444" + record, "standard input: y4m with no size" + taken},
      {y4m + "\"C444 X$(printf %02000d 1)\"" + record,
       "standard input: its first line, of y4m, is cut off or too long"},
      {":" + record, "standard input: has no pictures\n"},
      {":" + record + " --size 40x30", "standard input: has no pictures\n"},
      {"cat in.bgra" + record, "standard input: is neither PNG nor y4m; if it is raw pictures, "},
      {"zlibvideo record in.bgra --size 40x4096", "--size: \"40x4096\" is not a size of pictures"},
      {"zlibvideo record x.png --size 40x30", "--size: is for raw pictures, not for "}};
  for (auto& [script, complaint] : refusals) script += " -o old.zvm";
  ExpectRefusals(refusals);
}

TEST_F(RecordStreamTest, MessagesComeWhileTheInputIsOpen) {
  const Outcome live = Run(
      "mkfifo in; { head -c 4800 in.bgra; read x <in; } | zlibvideo record - --size 40x30 -o - |"
      " zlibvideo decode - --format hash | { timeout 60 head -n 1; echo >in; }; rm in");
  EXPECT_EQ(0u, live.text.find("0 1 40x30 ")) << live.text;
}

TEST_F(RecordStreamTest, ASignalEndsTheStreamAndLeavesAWholeFile) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const Outcome ended =
        RecordLive("x.zvm", "head -c 5000 in.bgra >&3; await test -s x.zvm.part; kill -" +
                                std::to_string(signal) + " $pid");
    EXPECT_EQ(0, ended.status) << signal << ended.text;
    EXPECT_TRUE(HasPictures(1)) << signal << ": picture 2 is not complete";
  }
  const Outcome early = RecordLive("x.zvm", "kill -INT $pid");
  EXPECT_EQ(128 + SIGINT, early.status) << "before the first picture";
  EXPECT_EQ(std::set<std::string>{"in.bgra"}, Files());
}

TEST_F(RecordStreamTest, ASecondInterruptEndsARecordingThatIsStuck) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "it keeps a signal back while a write waits";
#endif
  const Outcome stuck =
      RecordLive("full", "cat in.bgra >&3; gone() { ! kill -INT $pid 2>&5; }; await gone");
  EXPECT_EQ(128 + SIGINT, stuck.status) << stuck.text;
}

TEST_F(RecordStreamTest, AStreamMayChangeItsSize) {
  Run("for size in 40x30 20x60; do zlibvideo record in.bgra --size $size -o $size.zvm;"
      "zlibvideo decode $size.zvm -o $size-%d.png; done");
  EXPECT_EQ("", Run("cat 40x30-1.png 20x60-2.png 40x30-3.png | zlibvideo record - -o x.zvm").text);
  for (std::size_t n = 1; n <= 3; ++n) {
    const std::string number = std::to_string(n);
    const Outcome picture =
        Run("zlibvideo decode x.zvm --format bgra -o - --from " + number + " --to " + number);
    EXPECT_TRUE(SameBytes(fPixels.substr((n - 1) * kPictureBytes, kPictureBytes), picture.text));
  }
}

TEST_F(RecordStreamTest, NumbersOutOfOrderAreNoted) {
  Run("zlibvideo record in.bgra --size 40x30 -o a.zvm; zlibvideo decode a.zvm -o %d.png;"
      "mv 1.png 9.png; mv 2.png 10.png; mv 3.png 010.png");
  EXPECT_EQ("", Run("zlibvideo record 010.png 9.png 10.png -o x.zvm").text);
  EXPECT_EQ(0u, Run("zlibvideo record *.png -o x.zvm")
                    .text.find("zlibvideo: note: 10.png is recorded before 9.png; "));
}

}  // namespace
}  // namespace zlibvideo
