#ifndef ZLIBVIDEO_HOST_EBITMAPTYPE_H
#define ZLIBVIDEO_HOST_EBITMAPTYPE_H

#include <cstdint>

/// The kind of a host bitmap. The host has more kinds. The component names these two.
enum EBitmapType : std::int32_t {
  /// A picture of 4-byte pixels (blue, green, red, alpha in memory order) that the decoder may
  /// write. The decoder asks for this kind.
  kBitmapVideoFrame = 5,
  /// Pixels that cannot be addressed from here. The decoder leaves such a bitmap alone.
  kBitmapNotAddressable = 6,
};

#endif  // ZLIBVIDEO_HOST_EBITMAPTYPE_H
