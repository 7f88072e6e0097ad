#ifndef ZLIBVIDEO_HOST_HOSTMEMORY_H
#define ZLIBVIDEO_HOST_HOSTMEMORY_H

#include <cstddef>
#include <exception>
#include <limits>
#include <new>

#include "host/GCHeap.h"
#include "host/SystemMemory.h"

namespace zlibvideo {

/// The component's only way to the host allocator. Null if the host returns null. The host's
/// `std::bad_alloc` reaches the caller. Any other exception ends the process: the host's heap can
/// no longer be trusted. In a component that is compiled without exceptions, the host must not
/// throw.
[[nodiscard]] inline void* AllocateFromHost(
    std::size_t size, Vorn::FixedMallocOpts opts = Vorn::kFixedMallocDefault) {
  // The host counts in `unsigned long`, which is narrower on some systems.
  if (size > std::numeric_limits<unsigned long>::max()) Vorn::GCHeap::SignalObjectTooLarge();
#ifdef __cpp_exceptions
  try {
    return Vorn::SystemNew(static_cast<unsigned long>(size), opts);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    std::terminate();
  }
#else
  return Vorn::SystemNew(static_cast<unsigned long>(size), opts);
#endif
}

/// Returns memory to the host. Null is allowed and does nothing. An exception of the host ends the
/// process.
inline void ReleaseToHost(void* memory) noexcept {
  if (memory != nullptr) Vorn::SystemDelete(memory);
}

/// Releases the memory at `*owner` and sets `*owner` null.
template <typename T>
void ReleaseToHostAndClear(T** owner) noexcept {
  ReleaseToHost(*owner);
  *owner = nullptr;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_HOST_HOSTMEMORY_H
