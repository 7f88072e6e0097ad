#ifndef ZLIBVIDEO_TOOLS_RECORD_REDUCEDCOLORS_H
#define ZLIBVIDEO_TOOLS_RECORD_REDUCEDCOLORS_H

#include <cstdint>
#include <unordered_map>
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

  /// The picture as it will be shown.
  Picture Reduce(const Picture& picture) const;

  /// Block pixels as a colour-reduced stream.
  std::vector<unsigned char> Encode(ByteSpan pixels) const;

 private:
  static constexpr int kNotInPalette = -1;

  int PaletteIndex(std::uint32_t color) const;
  std::uint32_t Shown(std::uint32_t color) const;

  std::vector<std::uint32_t> fPalette;
  std::unordered_map<std::uint32_t, int> fIndices;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_REDUCEDCOLORS_H
