#ifndef ZLIBVIDEO_HOST_STANDIN_CACHELINEALLOCATOR_H
#define ZLIBVIDEO_HOST_STANDIN_CACHELINEALLOCATOR_H

#include <cstddef>
#include <new>

/// Allocator for standard containers whose memory begins with a cache line, as a host's surfaces
/// do. Where it does not, two blocks side by side share a line in every row of the bitmap, and
/// composition moves that line through the cache twice.
template <typename T>
struct CacheLineAllocator {
  using value_type = T;
  static constexpr std::align_val_t kCacheLine{64};

  CacheLineAllocator() = default;
  template <typename U>
  explicit CacheLineAllocator(const CacheLineAllocator<U>& /*other*/) {}

  // NOLINTBEGIN(readability-identifier-naming): the names that containers ask for
  /// Throws `std::bad_alloc` without memory.
  T* allocate(std::size_t count) {
    return static_cast<T*>(::operator new(count * sizeof(T), kCacheLine));
  }
  void deallocate(T* memory, std::size_t /*count*/) { ::operator delete(memory, kCacheLine); }
  // NOLINTEND(readability-identifier-naming)

  friend bool operator==(const CacheLineAllocator&, const CacheLineAllocator&) { return true; }
};

#endif  // ZLIBVIDEO_HOST_STANDIN_CACHELINEALLOCATOR_H
