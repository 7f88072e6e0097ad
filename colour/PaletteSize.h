#ifndef ZLIBVIDEO_COLOUR_PALETTESIZE_H
#define ZLIBVIDEO_COLOUR_PALETTESIZE_H

namespace zlibvideo {

/// Colours of a palette, and the bytes of one that a stream sends: red, green and blue of each.
inline constexpr unsigned int kPaletteColors = 128;
inline constexpr unsigned int kPaletteEntryBytes = 3;
inline constexpr unsigned int kPaletteBytes = kPaletteColors * kPaletteEntryBytes;

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_COLOUR_PALETTESIZE_H
