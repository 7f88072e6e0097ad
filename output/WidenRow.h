#ifndef ZLIBVIDEO_OUTPUT_WIDENROW_H
#define ZLIBVIDEO_OUTPUT_WIDENROW_H

namespace zlibvideo {

/// Bytes of a bitmap pixel: blue, green, red, alpha.
inline constexpr int kBitmapPixelBytes = 4;

/// Copies `pixels` block pixels of 3 bytes to bitmap pixels of 4, opaque. Reads exactly
/// `pixels` × 3 bytes and writes exactly `pixels` × 4; the two must not overlap. Neither needs any
/// alignment.
void WidenRow(const unsigned char* source, unsigned char* target, int pixels);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_OUTPUT_WIDENROW_H
