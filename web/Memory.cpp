// The end of the module's memory.

#include <cstdint>

namespace {

constexpr std::uintptr_t kPage = 65536;

std::uintptr_t MemorySize() {
  return __builtin_wasm_memory_size(0) * kPage;
}

/// The end of the memory in use. `_initialize` sets it before any allocation.
std::uintptr_t end = MemorySize();

}  // namespace

/// Replaces the function of the C library, which allocates at the end of the module's memory. That
/// end cannot move back. `end` is in the memory itself: if an earlier state of the memory is
/// restored, the memory behind it is used again.
extern "C" void* sbrk(std::intptr_t increment) {
  const std::uintptr_t begin = end;
  const std::uintptr_t wanted = begin + static_cast<std::uintptr_t>(increment);
  const bool overflows = increment > 0 && wanted < begin;
  // Even growth by 0 pages invalidates the views that a page has of the memory.
  const bool grows = wanted > MemorySize();
  const std::uintptr_t pages = grows ? (wanted - MemorySize() + kPage - 1) / kPage : 0;
  if (overflows || (grows && __builtin_wasm_memory_grow(0, pages) == SIZE_MAX)) {
    return reinterpret_cast<void*>(-1);  // the allocator returns null
  }
  end = wanted;
  return reinterpret_cast<void*>(begin);
}
