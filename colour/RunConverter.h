#ifndef ZLIBVIDEO_COLOUR_RUNCONVERTER_H
#define ZLIBVIDEO_COLOUR_RUNCONVERTER_H

#include <cstdint>
#include <span>

namespace zlibvideo {

/// The rest of a colour-reduced stream to convert, and of the room for its block pixels.
struct RestOfStream {
  const unsigned char* source;
  const unsigned char* sourceEnd;
  unsigned char* target;
  unsigned char* targetEnd;
};

/// Converts most of a stream, by runs of codes of a kind, and returns the rest, which the caller
/// must convert code by code: the pixels of the rest may already have been overwritten. Pixels that
/// no code reaches are unchanged. Nothing is read behind the source or written
/// behind the room, which must not overlap. `palette` has 128 colours 0x00RRGGBB, `colors` 32768 by
/// 15-bit colour.
using RunConverter = RestOfStream (*)(RestOfStream rest, const std::uint32_t* palette,
                                      const std::uint32_t* colors);

/// The fastest converter that this processor can run.
RunConverter FastestRunConverter();

struct NamedRunConverter {
  const char* name;
  RunConverter convert;
};

/// All converters that this processor can run, the portable converter first, the fastest last.
/// They differ in speed and in the rest that they return.
std::span<const NamedRunConverter> AvailableRunConverters();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_COLOUR_RUNCONVERTER_H
