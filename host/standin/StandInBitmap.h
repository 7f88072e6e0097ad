#ifndef ZLIBVIDEO_HOST_STANDIN_STANDINBITMAP_H
#define ZLIBVIDEO_HOST_STANDIN_STANDINBITMAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/SBitmapCore.h"
#include "host/standin/CacheLineAllocator.h"

/// The stand-in host's bitmap: pixels in plain memory, rows from the top with nothing between
/// them, the first at the beginning of a cache line. 0 × 0 until it is given a size.
class StandInBitmap : public SBitmapCore {
 public:
  using PixelBytes = std::vector<unsigned char, CacheLineAllocator<unsigned char>>;

  StandInBitmap() = default;

  /// Gives the bitmap a size in pixels. A change of size clears it to zero bytes; the same size
  /// keeps it. Throws `std::bad_alloc` without memory, and then has the old size and pixels.
  void Resize(std::int32_t width, std::int32_t height, EBitmapType type);

  /// All bytes, rows from the top. Valid until the size changes.
  const PixelBytes& Pixels() const { return fPixels; }

  /// Puts the pixels away, as a host short of memory may between two messages: the base address is
  /// null until `Restore`.
  void PutAway();

  bool IsLocked() const { return fLocked; }

 private:
  friend class SBitmapCore;

  PixelBytes fPixels;
  bool fLocked = false;
};

#endif  // ZLIBVIDEO_HOST_STANDIN_STANDINBITMAP_H
