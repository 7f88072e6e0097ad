#ifndef ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H
#define ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/pictures/PictureStream.h"

namespace zlibvideo {

/// The first line of a YUV4MPEG2 file. Only files whose colours are certain are read: 4:4:4, of
/// limited range, progressive.
struct Y4mHeader {
  /// Begins a file.
  static constexpr std::string_view kSignature = "YUV4MPEG2";
  /// Begins the line before each picture.
  static constexpr std::string_view kFrameMark = "FRAME";
  /// Values of the parameter C.
  static constexpr std::string_view kEightBits = "444";
  static constexpr std::string_view kTenBits = "444p10";
  /// An optional parameter, and its only permitted value.
  static constexpr std::string_view kRange = "XCOLORRANGE=";
  static constexpr std::string_view kLimited = "LIMITED";
  static constexpr std::size_t kPlanes = 3;

  /// Pixels, 1 to `FrameHeader::kMaxImageSize`.
  int width = 0;
  int height = 0;
  /// Of a sample. 8 bits are a byte. 10 bits are two bytes, least significant first.
  int bits = 0;

  /// Reads a line without its end. Returns false, with the reason in `problem`, for any other kind
  /// of file.
  [[nodiscard]] static bool Read(std::string_view line, Y4mHeader* header, std::string* problem);

  std::size_t PixelCount() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  }
  /// Bytes of the planes of Y, Cb and Cr together.
  std::size_t PictureBytes() const { return PixelCount() * kPlanes * (bits > 8 ? 2 : 1); }

 private:
  [[nodiscard]] bool ReadParameter(std::string_view parameter);
};

/// The pictures of a YUV4MPEG2 file, of the kinds that `Y4mHeader` reads, with the colours of
/// `Bt709`. 10-bit samples restore exactly the pictures that `decode` wrote.
class Y4mPictures : public PictureStream {
 public:
  explicit Y4mPictures(std::unique_ptr<InputFile> input) : PictureStream(std::move(input)) {}

 private:
  /// Bytes.
  static constexpr std::size_t kMaxLine = 1024;

  bool ReadPicture(Picture* picture) override;
  void ReadHeader();

  /// Has no size before `ReadHeader`.
  Y4mHeader fHeader;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_Y4MPICTURES_H
