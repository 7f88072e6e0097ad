#ifndef ZLIBVIDEO_TOOLS_RECORD_REDUCEDCOLORS_H
#define ZLIBVIDEO_TOOLS_RECORD_REDUCEDCOLORS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "bitstream/ByteSpan.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// The colours that a colour-reduced stream can show: those of a palette exactly, any other as a
/// 15-bit colour, which is without the low three bits of red, green and blue.
class ReducedColors {
 public:
  /// A palette of the colours that most pixels of `picture` have.
  explicit ReducedColors(const Picture& picture);

  /// The palette as it is sent: red, green, blue of each colour.
  std::vector<unsigned char> PaletteBytes() const;

  /// Turns block pixels into what will be shown.
  void Reduce(unsigned char* pixels, std::size_t count) const;

  /// Block pixels as a colour-reduced stream.
  std::vector<unsigned char> Encode(ByteSpan pixels) const;

 private:
  static constexpr int kNotInPalette = -1;

  int PaletteIndex(std::uint32_t color) const;
  std::uint32_t Shown(std::uint32_t color) const;

  /// Up to `kPaletteColors`.
  std::vector<std::uint32_t> fPalette;
  /// `fFirst` has for each 15-bit colour the first index of a palette colour that is cut to it.
  /// `fNext` has for each index the next. `kNotInPalette` at the end.
  std::vector<std::int16_t> fFirst;
  std::vector<std::int16_t> fNext;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_REDUCEDCOLORS_H
