#include <png.h>

#include <algorithm>
#include <map>

#include "tests/SameBytes.h"
#include "tests/StreamBuilder.h"
#include "tests/tool/ToolFixture.h"
#include "tools/info/RecordKind.h"
#include "tools/pictures/Png.h"
#include "tools/record/FrameEncoder.h"
#include "tools/record/RecordError.h"
#include "tools/stream/MessageOutline.h"
#include "tools/stream/SpanOf.h"
#include "tools/stream/StreamDecoder.h"

namespace zlibvideo {
namespace {

constexpr unsigned int kPictures = 15;
constexpr unsigned int kKeyEvery = 6;

/// Pictures that each change a little, as a desktop does, or much, or not at all.
std::vector<Picture> MakeScene(int width, int height) {
  std::mt19937 random(static_cast<unsigned int>(width * 1000 + height));
  const auto below = [&](int end) { return static_cast<int>(random() % unsigned(end)); };
  const int row = width * 3;
  const int size = row * height;
  Picture picture = {width, height, Bytes(static_cast<std::size_t>(size))};
  const auto paint = [&](int begin, int end, auto value) {
    for (int i = begin; i < std::min(end, size); ++i)
      picture.pixels[static_cast<std::size_t>(i)] = static_cast<unsigned char>(value(i));
  };
  paint(0, size, [&](int i) { return i % row / 24 * 9 + i / row / 2 * (i % 3 + 1); });
  std::vector<Picture> scene = {picture};
  while (scene.size() < kPictures) {
    Bytes& pixels = picture.pixels;
    const int begin = below(width * height) * 3;
    const int colors = 4 << 2 * below(3);
    const int edit = below(7);
    const auto noise = [&, color = 0](int i) mutable {
      if (i % 3 == 0) color = below(colors);
      return color * 3;
    };
    if (edit == 1) picture = scene.front();
    if (edit == 2) std::rotate(pixels.begin(), pixels.begin() + 3, pixels.end());
    if (edit == 3) paint(begin, begin + 3 * below(40), [&](int) { return colors; });
    if (edit >= 4) paint(begin, begin + row * below(9), noise);
    scene.push_back(picture);
  }
  return scene;
}

std::uint32_t ColorAt(const unsigned char* pixel) {
  return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
}

/// Colours with more pixels than the 129th most frequent colour, which the palette must hold.
std::map<std::uint32_t, int> FrequentColors(const Bytes& pixels) {
  std::map<std::uint32_t, int> counts;
  for (std::size_t i = 0; i < pixels.size(); i += 3) ++counts[ColorAt(&pixels[i])];
  std::vector<int> ranked(129);
  for (const auto& entry : counts) ranked.push_back(entry.second);
  std::sort(ranked.rbegin(), ranked.rend());
  std::erase_if(counts, [&](const auto& entry) { return entry.second <= ranked[128]; });
  return counts;
}

RecordOptions Options(int codecType, bool reduced = false, int passes = 1, unsigned int renew = 0) {
  return {codecType, 64, 64, kKeyEvery, reduced, passes, renew};
}

/// Only with `options.reduced`, and if they are not frequent, colours may be cut to 15 bits.
testing::AssertionResult Shows(const RecordOptions& options, const Picture& picture,
                               const FrameView& frame, const Bytes& keyPixels) {
  const auto exact = FrequentColors(keyPixels);
  const BitmapPixels shown{frame.width, {frame.pixels, frame.pixels + frame.ByteCount()}};
  BitmapPixels expected{picture.width};
  for (std::size_t i = 0; i < picture.pixels.size() / 3; ++i) {
    const std::uint32_t color = ColorAt(&picture.pixels[i * 3]), cut = color & 0xF8F8F8;
    const bool isCut = options.reduced && !exact.contains(color) && i < frame.PixelCount() &&
                       ColorAt(&shown.bytes[i * 4]) == cut;
    for (const int shift : {0, 8, 16}) {
      expected.bytes.push_back(static_cast<unsigned char>((isCut ? cut : color) >> shift & 0xFF));
    }
    expected.bytes.push_back(0xFF);
  }
  return SamePixels(expected, shown);
}

/// Adds the letters of the kinds of records.
void CheckMessage(const Bytes& message, bool key, bool unchanged, std::set<char>* kinds) {
  const auto outline = MessageOutline::Read(SpanOf(message));
  EXPECT_EQ(key, outline.header->IsKeyFrame());
  for (const auto& [record, place, offset] : outline.records) {
    const char kind = TextOf(KindOf(record, outline.header->codecType)).letter;
    EXPECT_TRUE(!key || place.pass == 2 || kind == 'D' || kind == 'd') << kind;
    EXPECT_TRUE(key || !unchanged || kind == '.') << kind;
    kinds->insert(kind);
  }
}

void RecordScene(RecordOptions options, int width, int height, std::set<char>* kinds) {
  FrameEncoder encoder(width, height, options);
  options.jobs = 3;
  FrameEncoder onThreads(width, height, options);
  StreamDecoder decoder;
  const std::vector<Picture> scene = MakeScene(width, height);
  for (unsigned int n = 0; n < kPictures; ++n) {
    SCOPED_TRACE(testing::Message() << width << "x" << height << ", picture " << n);
    const unsigned int key = n - n % kKeyEvery;
    Bytes message = encoder.Encode(scene[n]);
    EXPECT_TRUE(SameBytes(message, onThreads.Encode(scene[n]))) << "depends on threads";
    CheckMessage(message, n == key, n > 0 && scene[n].pixels == scene[n - 1].pixels, kinds);
    ASSERT_TRUE(decoder.Decode({message.data(), static_cast<std::uint32_t>(message.size())}));
    EXPECT_TRUE(Shows(options, scene[n], decoder.Frame(), scene[key].pixels));
  }
}

TEST(RecordTest, PicturesOfEveryGeometryComeBackInEveryKindOfRecord) {
  // clang-format off
  const std::pair<RecordOptions, std::string> modes[] = {
      {Options(3), ".D"}, {Options(6), ".BDPX"}, {Options(6, false, 1, 25), ".BDPX"},
      {Options(6, true), ".BPXdpx"}, {Options(6, false, 2), ".BDPXdpx"}};
  const int geometries[][4] = {
      {1, 1, 16, 16}, {33, 17, 16, 16}, {47, 210, 32, 208}, {300, 40, 256, 16}, {100, 70, 64, 64},
      {165, 170, 160, 160}, {250, 257, 256, 256}};
  // clang-format on
  for (auto [options, expectedKinds] : modes) {
    SCOPED_TRACE(expectedKinds);
    std::set<char> kinds;
    for (const auto& [width, height, blockWidth, blockHeight] : geometries) {
      options.blockWidth = blockWidth;
      options.blockHeight = blockHeight;
      RecordScene(options, width, height, &kinds);
    }
    EXPECT_EQ(expectedKinds, std::string(kinds.begin(), kinds.end()));
    options.level = 0;
    RecordScene(options, 2, 1, &kinds);
  }
}

TEST(RecordTest, BlockTooLargeForARecordTakesAnotherFormOrIsRefused) {
  const Picture noise = {256, 256, Noise(256 * 256 * 3, 1)};
  for (RecordOptions options : {Options(3), Options(6), Options(6, false, 1, 150)}) {
    options.blockWidth = options.blockHeight = 256;
    FrameEncoder encoder(256, 256, options);
    Picture picture = {256, 256, Bytes(noise.pixels.size())};
    std::copy_n(noise.pixels.begin(), 60'000, picture.pixels.begin());
    EXPECT_NO_THROW(encoder.Encode(picture));
    // Twice as much noise is too much to be sent whole, but half of it is there already.
    std::copy_n(noise.pixels.begin(), 60'000, picture.pixels.begin() + 90'000);
    if (options.codecType == 6) {
      EXPECT_NO_THROW(encoder.Encode(picture));
    }
    EXPECT_THROW(encoder.Encode(noise), RecordError);
  }
}

class RecordCommandTest : public ToolFixture {
 protected:
  void Save(const std::string& name, int width, int height, png_uint_32 format, const void* pixels,
            const void* palette = nullptr) const {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    image.colormap_entries = 1;
    png_image_write_to_file(&image, Path(name).c_str(), 0, pixels, 0, palette);
  }
};

TEST_F(RecordCommandTest, RecordsPngFilesOrLeavesTheOutputAlone) {
  const std::vector<Picture> scene = MakeScene(40, 30);
  for (std::size_t i = 0; i < 3; ++i)
    Save(std::to_string(i) + ".png", 40, 30, PNG_FORMAT_BGR, scene[i].pixels.data());
  Save("small.png", 9, 8, PNG_FORMAT_BGR, scene[0].pixels.data());
  const unsigned char half[] = {0, 0, 0, 128}, index[] = {0};
  Save("alpha.png", 1, 1, PNG_FORMAT_BGRA, half);
  Save("map.png", 1, 1, PNG_FORMAT_BGRA_COLORMAP, index, half);
  Run("echo no picture > text.png; echo old > x.zvm");
  std::vector<Refusal> refusals = {
      {"0.png small.png 1.png", "small.png: is 9x8, but the pictures before it are 40x30\n"},
      {"0.png none.png", "none.png: "},
      {"0.png text.png", "text.png: cannot be read as PNG: "},
      {"0.png alpha.png", "alpha.png: has transparent pixels"},
      {"0.png map.png", "map.png: has transparent pixels"},
      {"0.png --block 60x64", "--block: \"60x64\" is not a block size"},
      {"0.png --codec 6", "--codec: \"6\" is not a whole number from 1 to 2"},
      {"0.png --codec 1 --reduced", "--reduced: requires --codec 2\nRun "},
      {"0.png --codec 1 --renew 15", "--renew: requires --codec 2\nRun "}};
  for (auto& [script, complaint] : refusals) script = "zlibvideo record -o x.zvm " + script;
  ExpectRefusals(refusals);
  Run("zlibvideo record 0.png - 2.png -o - --block 16x32 <1.png | zlibvideo decode - -o "
      "out/%d.png");
  for (std::size_t i = 0; i < 3; ++i) {
    const Picture back = ReadPng(Path("out/" + std::to_string(i + 1) + ".png"));
    EXPECT_TRUE(SameBytes(scene[i].pixels, back.pixels)) << i;
  }
}

}  // namespace
}  // namespace zlibvideo
