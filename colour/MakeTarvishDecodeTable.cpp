// The table that widens 15-bit colours to 24 bits.

#include <cstdint>

#include "grid/BlockedCodec.h"
#include "host/HostMemory.h"

namespace {

constexpr std::uint32_t kDecodeTableEntries = 1U << 15;

/// Each 5-bit component moves to the top of its byte; the low three bits of every byte stay 0.
constexpr std::uint32_t WidenColor15(std::uint32_t color) {
  return (color << 9 & 0xF80000) | (color << 6 & 0xF800) | (color << 3 & 0xF8);
}

}  // namespace

void BlockedCodec::MakeTarvishDecodeTable() {
  if (fDecodeTable == nullptr) {
    fDecodeTable = static_cast<std::uint32_t*>(
        zlibvideo::AllocateFromHost(kDecodeTableEntries * sizeof(std::uint32_t)));
    if (fDecodeTable == nullptr) return;
  }
  for (std::uint32_t color = 0; color < kDecodeTableEntries; ++color) {
    fDecodeTable[color] = WidenColor15(color);
  }
}
