// The table that widens 15-bit colours to 24 bits.

#include <cstdint>

#include "colour/ReducedCode.h"
#include "grid/BlockedCodec.h"
#include "grid/Sizes.h"
#include "host/HostMemory.h"

using zlibvideo::kDecodeTableEntries;

void BlockedCodec::MakeTarvishDecodeTable() {
  if (fDecodeTable == nullptr) {
    fDecodeTable = static_cast<std::uint32_t*>(
        zlibvideo::AllocateFromHost(kDecodeTableEntries * sizeof(std::uint32_t)));
    if (fDecodeTable == nullptr) return;
  }
  for (std::uint32_t color = 0; color < kDecodeTableEntries; ++color) {
    fDecodeTable[color] = zlibvideo::WidenColor15(color);
  }
}
