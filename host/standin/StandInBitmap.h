#ifndef ZLIBVIDEO_HOST_STANDIN_STANDINBITMAP_H
#define ZLIBVIDEO_HOST_STANDIN_STANDINBITMAP_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>

#include "../SBitmapCore.h"

/// The stand-in host's bitmap: pixels in plain memory, rows from the top with nothing between
/// them. 0 × 0 until it is given a size. The stand-in host casts every bitmap that it is handed to
/// this class, so a program that links it draws into no other.
class StandInBitmap : public SBitmapCore {
 public:
  /// The pixels start on a cache line boundary, so that two blocks side by side share no line where
  /// their widths allow. A shared line is written twice.
  static constexpr std::align_val_t kAlignment{64};

  StandInBitmap() = default;

  /// Gives the bitmap a size in pixels, 0 to 16,384 a side. A change of size clears it to zero
  /// bytes. The same size keeps the pixels. Without memory, throws `std::bad_alloc` and keeps the
  /// old size and pixels or, compiled without exceptions, ends the process.
  void Resize(std::int32_t width, std::int32_t height, EBitmapType type);

  /// All bytes, rows from the top. Valid until the size changes.
  std::span<const unsigned char> Pixels() const { return {fPixels.get(), fByteCount}; }

  /// Puts the pixels away, as a host short of memory may between two messages: the base address is
  /// null until `Restore`.
  void PutAway();

  bool IsLocked() const { return fLocked; }

 private:
  friend class SBitmapCore;

  struct Delete {
    void operator()(unsigned char* pixels) const { ::operator delete[](pixels, kAlignment); }
  };

  std::unique_ptr<unsigned char[], Delete> fPixels;
  std::size_t fByteCount = 0;
  bool fLocked = false;
};

#endif  // ZLIBVIDEO_HOST_STANDIN_STANDINBITMAP_H
