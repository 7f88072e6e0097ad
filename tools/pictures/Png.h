#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNG_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNG_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// The first bytes of every PNG file.
inline constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n";

/// Reads a PNG file of any colour type and depth from `input`, up to the file's end: more bytes may
/// follow. `name` is for messages. Samples become 8 bits. The values of colours stay, whatever
/// colour space the file names. Throws `ToolError` if the file cannot be read, has more than 4095
/// pixels a side, or has pixels that are not opaque: a stream can show neither.
Picture ReadPng(InputFile* input, const std::string& name);
/// The same from the file `path`.
Picture ReadPng(const std::string& path);

/// A PNG file of `picture` in 8-bit RGB, compressed fast. Throws `std::bad_alloc` without memory.
std::vector<unsigned char> EncodePng(const Picture& picture);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNG_H
