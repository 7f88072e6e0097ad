#ifndef ZLIBVIDEO_TOOLS_PICTURES_Y4MHEADER_H
#define ZLIBVIDEO_TOOLS_PICTURES_Y4MHEADER_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zlibvideo {

/// What the first line of a YUV4MPEG2 file says, of the kinds whose colours can be told: as many
/// chroma samples as luma ones, limited range, progressive.
struct Y4mHeader {
  /// What a file begins with.
  static constexpr std::string_view kSignature = "YUV4MPEG2";
  /// Begins the line before each picture.
  static constexpr std::string_view kFrameMark = "FRAME";
  /// Values of the parameter C.
  static constexpr std::string_view kEightBits = "444";
  static constexpr std::string_view kTenBits = "444p10";
  /// A parameter, and the value that it must have if it is there.
  static constexpr std::string_view kRange = "XCOLORRANGE=";
  static constexpr std::string_view kLimited = "LIMITED";
  static constexpr std::size_t kPlanes = 3;

  /// Pixels, 1 to `FrameHeader::kMaxImageSize`.
  int width = 0;
  int height = 0;
  /// Of a sample: 8, or 10, which take two bytes, least significant first.
  int bits = 0;

  /// Reads a line, given without its end. False, with the reason in `problem`, when it is another
  /// kind or none.
  [[nodiscard]] static bool Read(std::string_view line, Y4mHeader* header, std::string* problem);

  std::size_t PixelCount() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  }
  /// Bytes of the planes of Y, Cb and Cr, which follow one another.
  std::size_t PictureBytes() const { return PixelCount() * kPlanes * (bits > 8 ? 2 : 1); }

 private:
  [[nodiscard]] bool ReadParameter(std::string_view parameter);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_Y4MHEADER_H
