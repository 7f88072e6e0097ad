#ifndef ZLIBVIDEO_BENCH_PLAINLOOPS_H
#define ZLIBVIDEO_BENCH_PLAINLOOPS_H

#include <cstdint>

#include "output/BitmapRows.h"

namespace zlibvideo::bench {

/// The straightforward loops that the component's own are measured against. They are compiled with
/// -O2, which is what makes them fastest.

/// A `RowWidener` that goes a byte at a time.
void PlainWidenRows(const unsigned char* source, const BitmapRows& targets, int rows, int pixels);

/// Conversion of a colour-reduced stream, a code at a time; returns the bytes written.
unsigned int PlainConvert(const unsigned char* source, unsigned int sourceLength,
                          unsigned char* destination, unsigned int room,
                          const std::uint32_t* palette, const std::uint32_t* colors);

/// The 32768 colours 0x00RRGGBB of the 15-bit colours.
const std::uint32_t* PlainColorTable();

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_PLAINLOOPS_H
