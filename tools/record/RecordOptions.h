#ifndef ZLIBVIDEO_TOOLS_RECORD_RECORDOPTIONS_H
#define ZLIBVIDEO_TOOLS_RECORD_RECORDOPTIONS_H

#include "bitstream/FrameHeader.h"

namespace zlibvideo {

/// How pictures become a stream. What is here by default makes the smallest lossless recordings of
/// a desktop.
struct RecordOptions {
  int codecType = kCodecTypeVersion2;
  /// Pixels, 16 to 256 in steps of 16. Larger blocks compress better, as long as DEFLATE, which
  /// looks back 32 KiB, still sees the same place in the reference: 160x64 pixels are 30 KiB.
  int blockWidth = 160;
  int blockHeight = 64;
  /// Every message with an index divisible by this is a key frame; 0: only the first.
  unsigned int keyEvery = 0;
  /// Version 2: show each colour as the palette or a 15-bit colour has it. With two passes that
  /// is what the first pass shows.
  bool reduced = false;
  /// Version 2, 1 or 2: with 2, each message sends the picture in reduced colours and then, in a
  /// second pass, what is missing to its exact pixels.
  int passes = 1;
  /// Version 2: a direct payload is taken even when it is up to this many percent larger than the
  /// smallest. It renews the reference that later payloads of its block are made against, which
  /// they otherwise drift away from.
  unsigned int renewPercent = 15;
  /// zlib's compression level, 0 to 9.
  int level = 8;
  /// Threads, at least 1. What is written does not depend on it.
  unsigned int jobs = 1;

  bool UsesReducedColors() const { return reduced || passes > 1; }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RECORDOPTIONS_H
