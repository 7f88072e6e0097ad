#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGBAND_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGBAND_H

#include <zlib.h>

#include <vector>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// A copy of some rows of a picture, with the row above them unless they are at the top.
struct PixelRows {
  /// All of them, the row above included.
  FrameView View() const { return {pixels.data(), width, height}; }

  std::vector<unsigned char> pixels;
  int width = 0;
  int height = 0;
  bool hasRowAbove = false;
};

/// Rows of a picture as the zlib stream (RFC 1950) in a PNG file holds them: the same wherever the
/// same rows, the one above included, stand.
struct PngBand {
  /// Whole bytes of DEFLATE data (RFC 1951) that follow those of the rows above and end nothing.
  std::vector<unsigned char> deflated;
  /// Bytes that it is inflated to, and their Adler-32.
  z_off_t length = 0;
  uLong adler = 0;
};

/// Makes bands. Owns zlib's state, which it uses again for every band.
class PngBandDeflater {
 public:
  /// Throws `std::bad_alloc` without memory.
  PngBandDeflater();
  ~PngBandDeflater();
  PngBandDeflater(const PngBandDeflater&) = delete;
  PngBandDeflater& operator=(const PngBandDeflater&) = delete;

  /// In 8-bit RGB. Throws `std::bad_alloc` without memory.
  PngBand Compress(const PixelRows& rows);

 private:
  z_stream fStream = {};
  std::vector<unsigned char> fRaw;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGBAND_H
