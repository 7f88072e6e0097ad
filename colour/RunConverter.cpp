#include "colour/RunConverter.h"

#include <bit>
#include <cstddef>
#include <cstring>

#include "colour/ReducedCode.h"
#include "grid/Sizes.h"

// Not on Windows, for the reason that output/RowWidener.cpp has.
#if defined(__GNUC__) && defined(__x86_64__) && !defined(_WIN32)
#define ZLIBVIDEO_CONVERT_X86
#include <immintrin.h>
#endif

namespace zlibvideo {
namespace {

/// `StorePixel` that may also write the byte after the pixel: a store instead of three. Only for
/// pixels that another pixel follows for certain: after the last pixel of a band, that byte belongs
/// to the row after it.
void StorePixelLoosely(unsigned char* pixel, std::uint32_t color) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(pixel, &color, sizeof(color));
  } else {
    StorePixel(pixel, color);
  }
}

/// Converts codes in turns, some indices and then some colours, without a test for the end of
/// source or room in between: two to three times as fast as code by code. Stops where a turn may no
/// longer fit.
RestOfStream ConvertRunsPortably(RestOfStream rest, const std::uint32_t* palette,
                                 const std::uint32_t* colors) {
  constexpr std::ptrdiff_t kMaxRun = 8;
  // A turn, and another code: its pixel must follow the pixels of the turn.
  constexpr std::ptrdiff_t kTurnSource = kMaxRun * (kIndexBytes + kWideCodeBytes) + kWideCodeBytes;
  constexpr std::ptrdiff_t kTurnTarget = (kMaxRun + kMaxRun + 1) * kBlockPixelBytes;
  auto [source, sourceEnd, target, targetEnd] = rest;
  // NOLINTNEXTLINE(bugprone-infinite-loop): it does not see that bindings change
  while (sourceEnd - source >= kTurnSource && targetEnd - target >= kTurnTarget) {
    std::ptrdiff_t run = 0;
    for (; run < kMaxRun && IsIndex(source + run); ++run) {
      StorePixelLoosely(target + run * kBlockPixelBytes, palette[source[run]]);
    }
    source += run;
    target += run * kBlockPixelBytes;
    for (run = 0; run < kMaxRun && !IsIndex(source + run * kWideCodeBytes); ++run) {
      StorePixelLoosely(target + run * kBlockPixelBytes,
                        colors[Color15(source + run * kWideCodeBytes)]);
    }
    source += run * kWideCodeBytes;
    target += run * kBlockPixelBytes;
  }
  return {source, sourceEnd, target, targetEnd};
}

#ifdef ZLIBVIDEO_CONVERT_X86

// The version below converts a fixed number of codes as if all were of the same kind, counts the
// codes that were, and moves on by that number: no branch depends on the length of a run of two
// codes or more. Surplus pixels are overwritten by those that follow. There is no version for NEON,
// for lack of a measurement.

constexpr int kEqualIndices = 16;
constexpr int kIndices = 8;
constexpr int kColors = 16;

__m128i Load16(const unsigned char* bytes) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

void Store16(unsigned char* bytes, __m128i value) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), value);
}

/// Whether all of the next codes are the same index, which most indices of a drawn picture are.
bool AreEqualIndices(const unsigned char* source) {
  constexpr int kAll = 0xFFFF;
  const __m128i first = _mm_set1_epi8(static_cast<char>(*source));
  return _mm_movemask_epi8(_mm_cmpeq_epi8(Load16(source), first)) == kAll;
}

/// 48 bytes are three lanes of 16. Each begins with another byte of the pixel.
[[gnu::target("avx2")]] void StoreEqualPixels(unsigned char* target, std::uint32_t color) {
  const __m128i pixel = _mm_set1_epi32(static_cast<int>(color));
  const __m128i blueFirst = _mm_setr_epi8(0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2, 0);
  const __m128i greenFirst = _mm_setr_epi8(1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1);
  const __m128i redFirst = _mm_setr_epi8(2, 0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2);
  Store16(target, _mm_shuffle_epi8(pixel, blueFirst));
  Store16(target + 16, _mm_shuffle_epi8(pixel, greenFirst));
  Store16(target + 32, _mm_shuffle_epi8(pixel, redFirst));
}

/// Takes the next 8 bytes for indices. Returns how many of them, from the first on, are.
int ConvertIndices(const unsigned char* source, unsigned char* target,
                   const std::uint32_t* palette) {
  constexpr std::uint64_t kWideBits = 0x8080'8080'8080'8080;
  std::uint64_t codes = 0;
  std::memcpy(&codes, source, sizeof(codes));
  for (std::ptrdiff_t i = 0; i < kIndices; ++i) {
    const std::uint64_t index = codes >> 8 * i & (kWideCodeBit - 1);
    StorePixelLoosely(target + i * kBlockPixelBytes, palette[index]);
  }
  return std::countr_zero(codes & kWideBits) / 8;  // 64 / 8 without any
}

/// Takes the next 32 bytes for 2-byte codes. Returns how many of these, from the first on, are. The
/// arithmetic of `WidenColor15`, on words of two bytes. A lane of 8 codes becomes two of 4 pixels:
///
///   codes          h0 l0 h1 l1 h2 l2 h3 l3 h4 l4 h5 l5 h6 l6 h7 l7
///   blueAndGreen   B0 G0 B1 G1 B2 G2 B3 G3 B4 G4 B5 G5 B6 G6 B7 G7
///   red            R0 0  R1 0  R2 0  R3 0  R4 0  R5 0  R6 0  R7 0
///   unpacked       B0 G0 R0 0  B1 G1 R1 0  B2 G2 R2 0  B3 G3 R3 0     and those of 4 to 7
///   stored         B0 G0 R0 B1 G1 R1 B2 G2 R2 B3 G3 R3 0  0  0  0     and 12 bytes on, 4 to 7
[[gnu::target("avx2")]] int ConvertColors(const unsigned char* source, unsigned char* target) {
  constexpr unsigned int kHighBytes = 0x5555'5555;
  constexpr std::ptrdiff_t kFourPixels = std::ptrdiff_t{4} * kBlockPixelBytes;
  const __m256i codes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source));
  const __m256i words = _mm256_or_si256(_mm256_slli_epi16(codes, 8), _mm256_srli_epi16(codes, 8));
  const __m256i lowByte = _mm256_set1_epi16(0xF8);
  const __m256i highByte = _mm256_slli_epi16(lowByte, 8);
  const __m256i blue = _mm256_and_si256(_mm256_slli_epi16(words, 3), lowByte);
  const __m256i green = _mm256_and_si256(_mm256_slli_epi16(words, 6), highByte);
  const __m256i red = _mm256_and_si256(_mm256_srli_epi16(words, 7), lowByte);
  const __m256i blueAndGreen = _mm256_or_si256(blue, green);
  const __m256i pack = _mm256_broadcastsi128_si256(
      _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1));
  const __m256i first = _mm256_shuffle_epi8(_mm256_unpacklo_epi16(blueAndGreen, red), pack);
  const __m256i other = _mm256_shuffle_epi8(_mm256_unpackhi_epi16(blueAndGreen, red), pack);
  Store16(target, _mm256_castsi256_si128(first));
  Store16(target + kFourPixels, _mm256_castsi256_si128(other));
  Store16(target + 2 * kFourPixels, _mm256_extracti128_si256(first, 1));
  Store16(target + 3 * kFourPixels, _mm256_extracti128_si256(other, 1));
  const auto wide = static_cast<unsigned int>(_mm256_movemask_epi8(codes));
  return std::countr_zero(~wide & kHighBytes) / 2;  // 32 / 2 without an index
}

[[gnu::target("avx2")]] RestOfStream ConvertRunsAvx2(RestOfStream rest,
                                                     const std::uint32_t* palette,
                                                     const std::uint32_t* colors) {
  // A turn writes into 18 pixels at most: 16 colours, and 4 bytes behind them. Those of the 18 that
  // turn out not to be its own must follow, so there have to be as many codes, and room for them.
  constexpr std::ptrdiff_t kTurn = kColors + 2;
  constexpr std::ptrdiff_t kTurnSource = kTurn * kWideCodeBytes;
  constexpr std::ptrdiff_t kTurnTarget = kTurn * kBlockPixelBytes;
  static_assert(kEqualIndices <= kColors && kIndices <= kColors);
  auto [source, sourceEnd, target, targetEnd] = rest;
  // NOLINTNEXTLINE(bugprone-infinite-loop): it does not see that bindings change
  while (sourceEnd - source >= kTurnSource && targetEnd - target >= kTurnTarget) {
    const bool isIndex = IsIndex(source);
    const std::ptrdiff_t codeBytes = isIndex ? kIndexBytes : kWideCodeBytes;
    std::ptrdiff_t run = 1;
    if (IsIndex(source + codeBytes) != isIndex) {
      // A single code. A dither has no other: counting its runs would take four times as long as a
      // plain loop.
      StorePixelLoosely(target, isIndex ? palette[*source] : colors[Color15(source)]);
    } else if (!isIndex) {
      run = ConvertColors(source, target);
    } else if (AreEqualIndices(source)) {
      StoreEqualPixels(target, palette[*source]);
      run = kEqualIndices;
    } else {
      run = ConvertIndices(source, target, palette);
    }
    source += run * codeBytes;
    target += run * kBlockPixelBytes;
  }
  // As at the end of the row wideners: SSE code that runs later would pay for upper halves in use.
  _mm256_zeroupper();
  return {source, sourceEnd, target, targetEnd};
}

#endif

constexpr NamedRunConverter kRunConverters[] = {
    {"portable", ConvertRunsPortably},
#ifdef ZLIBVIDEO_CONVERT_X86
    {"AVX2", ConvertRunsAvx2},
#endif
};

}  // namespace

std::span<const NamedRunConverter> AvailableRunConverters() {
#ifdef ZLIBVIDEO_CONVERT_X86
  if (!__builtin_cpu_supports("avx2")) return std::span(kRunConverters).first(1);
#endif
  return kRunConverters;
}

RunConverter FastestRunConverter() {
  return AvailableRunConverters().back().convert;
}

}  // namespace zlibvideo
