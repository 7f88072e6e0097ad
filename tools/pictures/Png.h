#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNG_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNG_H

#include <cstdio>
#include <string>
#include <vector>

#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Reads a PNG file of any colour type and depth, or standard input for "-". Samples are brought to
/// 8 bits; colours are taken as they are, whatever colour space the file names. Throws `ToolError`
/// when it cannot be read, is larger than a stream's pictures can be (4095 pixels a side), or has
/// pixels that are not opaque, which a stream cannot show.
Picture ReadPng(const std::string& path);
/// The same from an open stream, which is left at the end of the picture; `name` is for messages.
Picture ReadPng(std::FILE* stream, const std::string& name);

/// Replaces the contents of `png` by a PNG file with the colours of `frame` in 8-bit RGB. Throws
/// `std::bad_alloc` without memory.
void EncodePng(const FrameView& frame, std::vector<unsigned char>* png);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNG_H
