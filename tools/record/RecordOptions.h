#ifndef ZLIBVIDEO_TOOLS_RECORD_RECORDOPTIONS_H
#define ZLIBVIDEO_TOOLS_RECORD_RECORDOPTIONS_H

#include "bitstream/FrameHeader.h"

namespace zlibvideo {

/// Options of the encoder. The defaults make the smallest lossless recordings of a desktop.
struct RecordOptions {
  int codecType = kCodecTypeVersion2;
  /// Pixels, 16 to 256 in steps of 16. Larger blocks compress better if DEFLATE, which looks
  /// back 32 KiB, sees the same place in the reference: 160x64 pixels are 30 KiB.
  int blockWidth = 160;
  int blockHeight = 64;
  /// Every message with an index divisible by this is a key frame. 0: only the first.
  unsigned int keyEvery = 0;
  /// Version 2: reduce each colour to the palette or to 15 bits. With two passes, in the first.
  bool reduced = false;
  /// Version 2, 1 or 2: with 2, each message sends the picture in reduced colours and then, in a
  /// second pass, the differences from its exact pixels.
  int passes = 1;
  /// Version 2: a direct payload may be larger than the smallest payload by this many percent. It
  /// renews the reference of its block, and later payloads are smaller.
  unsigned int renewPercent = 15;
  /// zlib's compression level, 0 to 9.
  int level = 8;
  /// Threads, at least 1. The messages do not depend on it.
  unsigned int jobs = 1;

  bool UsesReducedColors() const { return reduced || passes > 1; }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RECORDOPTIONS_H
