#ifndef ZLIBVIDEO_TOOLS_DECODE_OUTPUTFORMAT_H
#define ZLIBVIDEO_TOOLS_DECODE_OUTPUTFORMAT_H

#include <optional>
#include <string>

namespace zlibvideo {

/// What `decode` makes of the pictures.
enum class OutputFormat {
  /// One PNG file a picture.
  kPng,
  /// Raw pixels, picture after picture.
  kBgra,
  /// A line of text a message.
  kHash,
  /// Nothing, for timing.
  kNull,
  /// One animated WebP file.
  kWebp,
  /// One YUV4MPEG2 file.
  kY4m,
};

/// The format with that name on the command line.
std::optional<OutputFormat> FormatByName(const std::string& name);
/// The format that the extension of a file name stands for.
std::optional<OutputFormat> FormatByExtension(const std::string& fileName);
/// False for text formats and `kNull`.
constexpr bool WritesPictures(OutputFormat format) {
  return format != OutputFormat::kNull && format != OutputFormat::kHash;
}
/// All names of formats, as the command line takes them, with "|" between them.
std::string FormatNames();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_OUTPUTFORMAT_H
