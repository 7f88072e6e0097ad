#ifndef ZLIBVIDEO_CAPI_HOST_H
#define ZLIBVIDEO_CAPI_HOST_H

#include <cstdint>

#include "host/SBitmapCore.h"

namespace zlibvideo {

/// Whether an allocation of the component failed on this thread since the last call.
bool MemoryRanOut();

/// The bitmap of the C interface: rows from the top without gaps, in its own memory. It has no
/// pixels and is 0 × 0 until `Resize`.
class PictureBitmap : public SBitmapCore {
 public:
  PictureBitmap() = default;
  PictureBitmap(const PictureBitmap&) = delete;
  PictureBitmap& operator=(const PictureBitmap&) = delete;
  ~PictureBitmap();

  /// Changes the size, in pixels, at least 1 a side. The pixels are undefined afterwards. False
  /// without memory: the bitmap is 0 × 0 then.
  [[nodiscard]] bool Resize(std::int32_t width, std::int32_t height);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_CAPI_HOST_H
