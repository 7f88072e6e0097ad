#ifndef ZLIBVIDEO_OUTPUT_ROWWIDENER_H
#define ZLIBVIDEO_OUTPUT_ROWWIDENER_H

#include <span>

#include "output/BitmapRows.h"

namespace zlibvideo {

/// Copies a block's pixels of 3 bytes to bitmap pixels of 4, opaque: `rows` rows of `pixels`
/// pixels, one after the other in `source`, row i to `targets.Address(i)`. Reads exactly `rows` ×
/// `pixels` × 3 bytes and writes exactly `pixels` × 4 bytes of each row; source and targets must
/// not overlap. None needs any alignment.
using RowWidener = void (*)(const unsigned char* source, const BitmapRows& targets, int rows,
                            int pixels);

/// The fastest one that this processor can run. Processor features are detected when the program
/// starts, so that a call for each frame costs next to nothing.
RowWidener FastestRowWidener();

struct NamedRowWidener {
  const char* name;
  RowWidener widen;
};

/// All that this processor can run, the portable one first and the fastest last. They differ in
/// nothing but speed.
std::span<const NamedRowWidener> AvailableRowWideners();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_OUTPUT_ROWWIDENER_H
