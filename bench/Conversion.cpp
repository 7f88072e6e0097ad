#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "bench/Contest.h"
#include "bench/IsolatedBenchmarks.h"
#include "bench/PlainLoops.h"
#include "grid/BlockFormat.h"
#include "grid/BlockedCodec.h"
#include "grid/Sizes.h"

namespace zlibvideo::bench {
namespace {

constexpr int kBlockSize = 64;
constexpr int kBlockPixels = kBlockSize * kBlockSize;
/// Blocks of random codes: enough that no branch predictor learns them by heart.
constexpr int kRandomBlocks = 64;
constexpr auto kFormat = static_cast<unsigned char>(kFormatColorReduced);

/// Colour-reduced streams of blocks and room for the pixels of any one of them.
struct Streams {
  std::vector<Bytes> codes;
  BlockedCodec codec;
  Bytes pixels = Bytes(static_cast<std::size_t>(RawDataCapacity(kBlockSize, kBlockSize)));

  unsigned int ConvertPlainly(const Bytes& stream) {
    return PlainConvert(stream.data(), static_cast<unsigned int>(stream.size()), pixels.data(),
                        static_cast<unsigned int>(pixels.size()),
                        BlockedCodec::fDefaultTarvishPalette, PlainColorTable());
  }
  unsigned int Convert(Bytes& stream) {
    auto length = static_cast<unsigned int>(pixels.size());
    codec.ConvertImageColorToQuarn24(pixels.data(), &length, stream.data(),
                                     static_cast<unsigned int>(stream.size()), kFormat);
    return length;
  }
};

/// One block whose codes come in runs of a kind. Runs of indices have `indexRun` codes on average
/// and runs of 2-byte codes `colorRun`; 0 means that there are none.
Bytes RandomCodes(double indexRun, double colorRun, std::mt19937* random) {
  Bytes codes;
  std::uniform_real_distribution<double> chance(0, 1);
  bool index = indexRun > 0;
  for (int pixel = 0; pixel < kBlockPixels; ++pixel) {
    if (index) {
      codes.push_back(static_cast<unsigned char>((*random)() & 0x7F));
    } else {
      codes.push_back(static_cast<unsigned char>((*random)() | 0x80));
      codes.push_back(static_cast<unsigned char>((*random)()));
    }
    const double run = index ? indexRun : colorRun;
    const double other = index ? colorRun : indexRun;
    if (other > 0 && chance(*random) * run < 1) index = !index;
  }
  return codes;
}

void RegisterCase(const std::string& name, std::vector<Bytes> codes) {
  const auto streams = std::make_shared<Streams>();
  streams->codes = std::move(codes);
  double bytes = 0;
  for (Bytes& stream : streams->codes) bytes += streams->Convert(stream);
  RegisterContest("convert/" + name, {bytes, false},
                  {{"plain loop",
                    [streams] {
                      for (Bytes& stream : streams->codes) streams->ConvertPlainly(stream);
                    }},
                   {"component", [streams] {
                      for (Bytes& stream : streams->codes) streams->Convert(stream);
                    }}});
}

}  // namespace

void RegisterConversion(std::vector<Bytes> recorded) {
  if (!recorded.empty()) RegisterCase("recorded", std::move(recorded));
  struct Mix {
    const char* name;
    double indexRun;
    double colorRun;
  };
  constexpr Mix kMixes[] = {
      {"indices only", 1, 0}, {"colours only", 0, 1}, {"runs of 64", 64, 64},
      {"runs of 16", 16, 16}, {"runs of 8", 8, 8},    {"runs of 4", 4, 4},
      {"1 % colours", 99, 1}, {"10 % colours", 9, 1}, {"10 % indices", 1, 9},
      {"noise", 2, 2},        {"runs of 3", 3, 3},    {"alternating", 1, 1},
  };
  std::mt19937 random(1);
  for (const Mix& mix : kMixes) {
    std::vector<Bytes> codes;
    for (int i = 0; i < kRandomBlocks; ++i) {
      codes.push_back(RandomCodes(mix.indexRun, mix.colorRun, &random));
    }
    RegisterCase(mix.name, std::move(codes));
  }
}

}  // namespace zlibvideo::bench
