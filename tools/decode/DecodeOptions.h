#ifndef ZLIBVIDEO_TOOLS_DECODE_DECODEOPTIONS_H
#define ZLIBVIDEO_TOOLS_DECODE_DECODEOPTIONS_H

#include <cstdint>
#include <limits>
#include <string>

#include "tools/decode/FrameRate.h"
#include "tools/decode/OutputFormat.h"

namespace zlibvideo {

/// What `decode` is asked to do. File names may be "-".
struct DecodeOptions {
  std::string input;
  /// Not used for `kNull`. For `kPng` a `NamePattern`, or "-".
  std::string output;
  OutputFormat format = OutputFormat::kNull;
  /// Instead of an output: a file of hash lines to compare with.
  std::string verify;
  /// Which pictures are written, numbers from 1, both included.
  std::uint64_t from = 1;
  std::uint64_t to = std::numeric_limits<std::uint64_t>::max();
  FrameRate frameRate;
  /// 8-bit samples in `kY4m`, which do not keep every colour, instead of 10-bit ones, which do.
  bool y4m8Bit = false;
  bool quiet = false;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_DECODEOPTIONS_H
