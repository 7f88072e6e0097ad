#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

#include "bench/PlainConvert.h"
#include "colour/RunConverter.h"
#include "decoder/ZLibVideoDecompressor.h"
#include "grid/BlockFormat.h"
#include "tests/SameBytes.h"

namespace zlibvideo {
namespace {

/// Codes in runs of a kind that are a little longer or shorter than those that are converted in one
/// go, or of no length at all. Every other run of indices is of one index.
std::vector<unsigned char> RandomCodes(unsigned int length, std::mt19937* random) {
  constexpr unsigned int kRuns[] = {1, 3, 8, 15, 16, 17, 40};
  std::vector<unsigned char> codes;
  while (codes.size() < length) {
    const bool wide = (*random)() % 2 == 0, same = (*random)() % 2 == 0;
    const auto first = static_cast<unsigned char>((*random)() & 0x7F);
    for (unsigned int i = kRuns[(*random)() % std::size(kRuns)]; i > 0; --i) {
      codes.push_back(static_cast<unsigned char>(wide   ? (*random)() | 0x80
                                                 : same ? first
                                                        : (*random)() & 0x7F));
      if (wide) codes.push_back(static_cast<unsigned char>((*random)()));
    }
  }
  codes.resize(length);
  return codes;
}

TEST(Conversion, AgreesWithThePlainLoopOnAllSmallLengthsAndRooms) {
  constexpr unsigned int kGuard = 64;
  std::mt19937 random(1);
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  const std::uint32_t* palette = BlockedCodec::fDefaultTarvishPalette;
  const std::uint32_t* colors = bench::PlainColorTable();
  for (unsigned int length = 0; length < 180; ++length) {
    for (unsigned int room = length * 3 / 2; room < length * 3 + 9; ++room) {
      std::vector<unsigned char> codes = RandomCodes(length, &random);
      std::vector<unsigned char> target(room + kGuard, 0xEE), expected = target;
      const unsigned int size =
          bench::PlainConvert(codes.data(), length, expected.data(), room, palette, colors);
      unsigned int produced = room;
      decoder.ConvertImageColorToQuarn24(target.data(), &produced, codes.data(), length,
                                         kFormatColorReduced);
      ASSERT_EQ(produced, size);
      ASSERT_TRUE(SameBytes(expected, target)) << length << " bytes into " << room;
      for (const NamedRunConverter& variant : AvailableRunConverters()) {
        SCOPED_TRACE(variant.name);
        std::fill(target.begin(), target.end(), 0xEE);
        const RestOfStream rest = variant.convert(
            {codes.data(), codes.data() + length, target.data(), target.data() + room}, palette,
            colors);
        bench::PlainConvert(rest.source, static_cast<unsigned int>(rest.sourceEnd - rest.source),
                            rest.target, static_cast<unsigned int>(rest.targetEnd - rest.target),
                            palette, colors);
        ASSERT_TRUE(SameBytes(expected, target)) << length << " bytes into " << room;
      }
    }
  }
}

}  // namespace
}  // namespace zlibvideo
