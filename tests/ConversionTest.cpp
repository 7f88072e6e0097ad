#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "bench/PlainLoops.h"
#include "decoder/ZLibVideoDecompressor.h"

namespace zlibvideo {
namespace {

TEST(Conversion, AgreesWithThePlainLoopOnAllSmallLengthsAndRooms) {
  constexpr unsigned int kGuard = 8;
  std::mt19937 random(1);
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  for (unsigned int length = 0; length < 80; ++length) {
    for (unsigned int room = length * 3 / 2; room < length * 3 + 9; ++room) {
      std::vector<unsigned char> codes(length), target(room + kGuard, 0xEE), expected = target;
      // Either kind of code at random, from always to never; or runs that the code is made for.
      const auto often = random() % 18, run = 7 + random() % 4;
      for (unsigned int i = 0; i < length; ++i) {
        const bool wide = often <= 8 ? random() % 8 < often : i % (run + 16) >= run;
        codes[i] = static_cast<unsigned char>((random() & 0x7F) | (wide ? 0x80 : 0));
      }
      unsigned int produced = room;
      decoder.ConvertImageColorToQuarn24(target.data(), &produced, codes.data(), length, 0x10);
      ASSERT_EQ(produced, bench::PlainConvert(codes.data(), length, expected.data(), room,
                                              BlockedCodec::fDefaultTarvishPalette,
                                              bench::PlainColorTable()));
      ASSERT_EQ(target, expected) << length << " bytes into " << room;
    }
  }
}

}  // namespace
}  // namespace zlibvideo
