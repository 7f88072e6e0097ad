#include "output/RowWidener.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "grid/Sizes.h"

#if defined(__GNUC__) && defined(__x86_64__)
#define ZLIBVIDEO_WIDEN_X86
#include <immintrin.h>
#elif defined(__GNUC__) && defined(__aarch64__)
#define ZLIBVIDEO_WIDEN_NEON
#include <arm_neon.h>
#endif

namespace zlibvideo {
namespace {

constexpr unsigned char kOpaque = 0xFF;

// The places of blue, green and red in a bitmap pixel. In the C interface, red is first.
#ifdef ZLIBVIDEO_RED_FIRST
constexpr int kPlaces[kBlockPixelBytes] = {2, 1, 0};
#else
constexpr int kPlaces[kBlockPixelBytes] = {0, 1, 2};
#endif

/// The bytes of `pixels` pixels of a block.
std::ptrdiff_t SourceOffset(int pixels) {
  return std::ptrdiff_t{pixels} * kBlockPixelBytes;
}

/// The bytes of `pixels` pixels of a bitmap.
std::ptrdiff_t TargetOffset(int pixels) {
  return std::ptrdiff_t{pixels} * kBitmapPixelBytes;
}

/// Words hold bytes in memory order from their low end. On a big-endian machine they are turned.
std::uint64_t InLittleEndian(std::uint64_t word) {
  if constexpr (std::endian::native == std::endian::little) return word;
  std::uint64_t turned = 0;
  for (int byte = 0; byte < 8; ++byte) turned |= (word >> 8 * byte & 0xFF) << (56 - 8 * byte);
  return turned;
}

std::uint64_t LoadWord(const unsigned char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof(word));
  return InLittleEndian(word);
}

void StoreWord(unsigned char* bytes, std::uint64_t word) {
  word = InLittleEndian(word);
  std::memcpy(bytes, &word, sizeof(word));
}

/// Spreads the low 6 bytes of a word.
std::uint64_t WidenTwoPixels(std::uint64_t word) {
  constexpr std::uint64_t kFirst = 0x0000'0000'00FF'FFFF;
  constexpr std::uint64_t kSecond = 0x0000'FFFF'FF00'0000;
  constexpr std::uint64_t kAlphas = 0xFF00'0000'FF00'0000;
  const std::uint64_t spread = (word & kFirst) | (word & kSecond) << 8;
  if constexpr (kPlaces[0] == 0) return spread | kAlphas;
  constexpr std::uint64_t kLowest = 0x0000'00FF'0000'00FF;
  constexpr std::uint64_t kGreens = 0x0000'FF00'0000'FF00;
  return (spread & kLowest) << 16 | (spread & kGreens) | (spread >> 16 & kLowest) | kAlphas;
}

/// 24 bytes to 32. The loaded words overlap: two pixels are three quarters of a word. The last word
/// is the last 8 bytes, so no byte after them is read.
void WidenEightPixels(const unsigned char* source, unsigned char* target) {
  StoreWord(target, WidenTwoPixels(LoadWord(source)));
  StoreWord(target + 8, WidenTwoPixels(LoadWord(source + 6)));
  StoreWord(target + 16, WidenTwoPixels(LoadWord(source + 12)));
  StoreWord(target + 24, WidenTwoPixels(LoadWord(source + 16) >> 16));
}

void WidenPixel(const unsigned char* source, unsigned char* target) {
  target[kPlaces[0]] = source[0];
  target[kPlaces[1]] = source[1];
  target[kPlaces[2]] = source[2];
  target[3] = kOpaque;
}

// `targets` is a reference. As a value it would be stored piecewise and loaded whole, which defeats
// store forwarding: every block would wait for the stores of the block before. Each version copies
// it into registers. Without the copy it would be reloaded for every row, because the stores of
// pixels may alias it.

void WidenRowsPortably(const unsigned char* source, const BitmapRows& targets, int rows,
                       int pixels) {
  const BitmapRows held = targets;
  constexpr int kEight = 8;
  for (int row = 0; row < rows; ++row) {
    unsigned char* target = held.Address(row);
    int left = pixels;
    for (; left >= kEight; left -= kEight) {
      WidenEightPixels(source, target);
      source += SourceOffset(kEight);
      target += TargetOffset(kEight);
    }
    for (; left > 0; --left) {
      WidenPixel(source, target);
      source += SourceOffset(1);
      target += TargetOffset(1);
    }
  }
}

// The versions below write groups of 16 pixels. The width of a block is a multiple of 16, except in
// the last column, which may be cut. There, the last group ends with the row and overlaps the group
// before it, so some pixels are written twice. Rows shorter than a group are written portably. No
// group reads or writes a byte outside its pixels.
constexpr int kGroup = 16;

using GroupWidener = void (*)(const unsigned char* source, unsigned char* target);

/// Inlined into its caller, and `widenGroup` into it. So all is compiled for the caller's
/// processor.
template <GroupWidener widenGroup>
[[gnu::always_inline]] inline void WidenRowsInGroups(const unsigned char* source,
                                                     const BitmapRows& targets, int rows,
                                                     int pixels) {
  if (pixels < kGroup) return WidenRowsPortably(source, targets, rows, pixels);
  const BitmapRows held = targets;
  for (int row = 0; row < rows; ++row) {
    unsigned char* target = held.Address(row);
    int left = pixels;
    for (; left >= kGroup; left -= kGroup) {
      widenGroup(source, target);
      source += SourceOffset(kGroup);
      target += TargetOffset(kGroup);
    }
    if (left == 0) continue;
    source += SourceOffset(left);
    target += TargetOffset(left);
    widenGroup(source - SourceOffset(kGroup), target - TargetOffset(kGroup));
  }
}

#ifdef ZLIBVIDEO_WIDEN_X86

// Eight pixels are 24 bytes of a block and 32 bytes of the bitmap. A load reads 16 bytes and gives
// four pixels. The first load reads bytes 0 to 15. Its pixels are in front:
//
//   block    B0 G0 R0 B1 G1 R1 B2 G2 R2 B3 G3 R3 b4 g4 r4 b5    small letters: not used
//   bitmap   B0 G0 R0 FF B1 G1 R1 FF B2 G2 R2 FF B3 G3 R3 FF
//
// The other load reads bytes 8 to 23, and no byte after them. Its pixels are behind:
//
//   block    r2 b3 g3 r3 B4 G4 R4 B5 G5 R5 B6 G6 R6 B7 G7 R7
//   bitmap   B4 G4 R4 FF B5 G5 R5 FF B6 G6 R6 FF B7 G7 R7 FF
//
// For each byte of the bitmap, the tables have the number of its byte in the load. -1 makes a 0,
// which then becomes alpha.
alignas(32) constexpr signed char kSpread[2][16] = {
#ifdef ZLIBVIDEO_RED_FIRST
    {2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1},
    {6, 5, 4, -1, 9, 8, 7, -1, 12, 11, 10, -1, 15, 14, 13, -1},
#else
    {0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1},
    {4, 5, 6, -1, 7, 8, 9, -1, 10, 11, 12, -1, 13, 14, 15, -1},
#endif
};
constexpr int kOtherFourPixels = 8;
constexpr int kAlphaBits = static_cast<int>(0xFF000000);

/// The distance of the prefetch, in bytes. The processor's own prefetcher must learn the addresses
/// of each block anew. Prefetching the target as well was slower. On NEON it is not measured, so
/// that version has no prefetch.
constexpr std::intptr_t kPrefetchDistance = 1024;

/// The address may lie past the block's end, so it is a number here. Its prefetch is harmless.
void PrefetchAhead(const unsigned char* source) {
  const std::intptr_t address = reinterpret_cast<std::intptr_t>(source) + kPrefetchDistance;
  _mm_prefetch(reinterpret_cast<const char*>(address), _MM_HINT_T0);
}

__m128i Load16(const unsigned char* bytes) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

[[gnu::target("ssse3")]] void WidenEightPixelsSsse3(const unsigned char* source,
                                                    unsigned char* target) {
  const __m128i alpha = _mm_set1_epi32(kAlphaBits);
  const __m128i first = _mm_load_si128(reinterpret_cast<const __m128i*>(kSpread[0]));
  const __m128i other = _mm_load_si128(reinterpret_cast<const __m128i*>(kSpread[1]));
  const __m128i low = _mm_shuffle_epi8(Load16(source), first);
  const __m128i high = _mm_shuffle_epi8(Load16(source + kOtherFourPixels), other);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_or_si128(low, alpha));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(target) + 1, _mm_or_si128(high, alpha));
}

[[gnu::target("avx2")]] void WidenEightPixelsAvx2(const unsigned char* source,
                                                  unsigned char* target) {
  const __m256i alpha = _mm256_set1_epi32(kAlphaBits);
  const __m256i spread = _mm256_load_si256(reinterpret_cast<const __m256i*>(kSpread));
  const __m256i bytes = _mm256_inserti128_si256(_mm256_castsi128_si256(Load16(source)),
                                                Load16(source + kOtherFourPixels), 1);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(target),
                      _mm256_or_si256(_mm256_shuffle_epi8(bytes, spread), alpha));
}

[[gnu::target("ssse3")]] void WidenGroupSsse3(const unsigned char* source, unsigned char* target) {
  PrefetchAhead(source);
  WidenEightPixelsSsse3(source, target);
  WidenEightPixelsSsse3(source + SourceOffset(kGroup / 2), target + TargetOffset(kGroup / 2));
}

[[gnu::target("avx2")]] void WidenGroupAvx2(const unsigned char* source, unsigned char* target) {
  PrefetchAhead(source);
  WidenEightPixelsAvx2(source, target);
  WidenEightPixelsAvx2(source + SourceOffset(kGroup / 2), target + TargetOffset(kGroup / 2));
}

[[gnu::target("ssse3")]] void WidenRowsSsse3(const unsigned char* source, const BitmapRows& targets,
                                             int rows, int pixels) {
  WidenRowsInGroups<WidenGroupSsse3>(source, targets, rows, pixels);
}

[[gnu::target("avx2")]] void WidenRowsAvx2(const unsigned char* source, const BitmapRows& targets,
                                           int rows, int pixels) {
  WidenRowsInGroups<WidenGroupAvx2>(source, targets, rows, pixels);
  // SSE code that runs later would pay for upper halves in use. Compilers insert this by themselves
  // only when they optimise.
  _mm256_zeroupper();
}

#endif

#ifdef ZLIBVIDEO_WIDEN_NEON

void WidenGroupNeon(const unsigned char* source, unsigned char* target) {
  const uint8x16x3_t colors = vld3q_u8(source);
  vst4q_u8(target,
           {colors.val[kPlaces[0]], colors.val[1], colors.val[kPlaces[2]], vdupq_n_u8(kOpaque)});
}

void WidenRowsNeon(const unsigned char* source, const BitmapRows& targets, int rows, int pixels) {
  WidenRowsInGroups<WidenGroupNeon>(source, targets, rows, pixels);
}

#endif

constexpr NamedRowWidener kRowWideners[] = {
    {"portable", WidenRowsPortably},
#if defined(ZLIBVIDEO_WIDEN_X86)
    {"SSSE3", WidenRowsSsse3},
    {"AVX2", WidenRowsAvx2},
#elif defined(ZLIBVIDEO_WIDEN_NEON)
    {"NEON", WidenRowsNeon},
#endif
};

}  // namespace

std::span<const NamedRowWidener> AvailableRowWideners() {
#ifdef ZLIBVIDEO_WIDEN_X86
#ifdef _WIN32
  // GCC there may keep 32 bytes at places of the stack that are not aligned for it (GCC bug 54412).
  constexpr bool kAvx2IsSafe = false;
#else
  constexpr bool kAvx2IsSafe = true;
#endif
  // A processor with AVX2 has SSSE3 as well, so the usable wideners are always the front of the
  // list.
  if (!kAvx2IsSafe || !__builtin_cpu_supports("avx2")) {
    return std::span(kRowWideners).first(__builtin_cpu_supports("ssse3") ? 2 : 1);
  }
#endif
  return kRowWideners;
}

RowWidener FastestRowWidener() {
  return AvailableRowWideners().back().widen;
}

}  // namespace zlibvideo
