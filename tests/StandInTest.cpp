// The stand-in host hands out nothing stale, and a decoder on it shows nothing stale.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <span>

#include "decoder/ZLibVideoDecompressor.h"
#include "host/standin/StandInVideoObject.h"
#include "tests/GoodStream.h"

using namespace zlibvideo;

TEST(StandInTest, ShowsNothingStale) {
  const PlainPicture noise(Header(6, 16, 16, 16, 16), 1);
  PlainPicture black = noise;
  black.blocks[0].assign(768, 0);
  const Message rejected{.header = noise.header, .records = {{.format = formats::kColorField1}}};
  // What one decoder decodes is what the heap has left for the next.
  for (int i = 0; i < 10; ++i) {
    StandInVideoObject video;
    ZLibVideoDecompressor decoder(nullptr, nullptr);
    Bytes message = (i % 2 == 0 ? noise.Whole() : rejected).Build();
    EXPECT_TRUE(decoder.DecompressVideo(video.Ref(), message.data(), message.size(), false));
    const std::span<const unsigned char> shown = video.Bitmap().Pixels();
    EXPECT_TRUE(
        SamePixels((i % 2 == 0 ? noise : black).Bitmap(), {16, Bytes(shown.begin(), shown.end())}))
        << "decoder " << i;
  }
}
