#ifndef ZLIBVIDEO_HOST_BITMAPPIXEL_H
#define ZLIBVIDEO_HOST_BITMAPPIXEL_H

namespace zlibvideo {

/// Bytes of a bitmap pixel: blue, green, red, alpha.
inline constexpr int kBitmapPixelBytes = 4;

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_HOST_BITMAPPIXEL_H
