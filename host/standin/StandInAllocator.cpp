// The stand-in host's allocator: zero-filled memory, so that a picture never shows a byte that no
// message wrote. On exhaustion it throws `std::bad_alloc` or, compiled without exceptions, returns
// null.

#include <cstdlib>
#include <new>

#include "host/GCHeap.h"
#include "host/SystemMemory.h"

void* Vorn::SystemNew(unsigned long size, FixedMallocOpts /*opts*/) {
  void* memory = std::calloc(size == 0 ? 1 : size, 1);
#ifdef __cpp_exceptions
  if (memory == nullptr) throw std::bad_alloc();
#endif
  return memory;
}

void Vorn::SystemDelete(void* memory) {
  std::free(memory);
}

void Vorn::GCHeap::SignalObjectTooLarge() {
  std::abort();
}
