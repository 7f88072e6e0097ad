#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNG_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNG_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// What a PNG file begins with.
inline constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n";

/// Reads a PNG file of any colour type and depth, which need not be a whole input: more may follow
/// it. `name` is for messages. Samples are brought to 8 bits; colours are taken as they are,
/// whatever colour space the file names. Throws `ToolError` when it cannot be read, is larger than
/// a stream's pictures can be (4095 pixels a side), or has pixels that are not opaque, which a
/// stream cannot show.
Picture ReadPng(InputFile* input, const std::string& name);
/// The same from the file `path`.
Picture ReadPng(const std::string& path);

/// Replaces the contents of `png` by a PNG file with the colours of `frame` in 8-bit RGB. Throws
/// `std::bad_alloc` without memory.
void EncodePng(const FrameView& frame, std::vector<unsigned char>* png);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNG_H
