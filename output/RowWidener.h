#ifndef ZLIBVIDEO_OUTPUT_ROWWIDENER_H
#define ZLIBVIDEO_OUTPUT_ROWWIDENER_H

#include <span>

#include "output/BitmapRows.h"

namespace zlibvideo {

/// Copies a block's pixels of 3 bytes to bitmap pixels of 4, opaque: `rows` rows of `pixels`
/// pixels, without gaps in `source`, row i to `targets.Address(i)`. Reads exactly `rows` ×
/// `pixels` × 3 bytes and writes exactly `pixels` × 4 bytes of each row. Source and targets must
/// not overlap. No alignment is needed.
using RowWidener = void (*)(const unsigned char* source, const BitmapRows& targets, int rows,
                            int pixels);

/// The fastest widener that this processor can run. Processor features are detected when the
/// program starts, so that a call for each frame costs next to nothing.
RowWidener FastestRowWidener();

struct NamedRowWidener {
  const char* name;
  RowWidener widen;
};

/// All wideners that this processor can run, the portable widener first, the fastest last. They
/// differ only in speed.
std::span<const NamedRowWidener> AvailableRowWideners();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_OUTPUT_ROWWIDENER_H
