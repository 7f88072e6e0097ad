#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGCONTAINER_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGCONTAINER_H

#include <memory>
#include <vector>

#include "tools/pictures/Picture.h"
#include "tools/pictures/PngBand.h"

namespace zlibvideo {

/// Replaces the contents of `png` by a PNG file of that size, in 8-bit RGB, that holds `bands` from
/// the top. Throws `std::bad_alloc` without memory.
void WritePng(const FrameView& size, const std::vector<std::shared_ptr<const PngBand>>& bands,
              std::vector<unsigned char>* png);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGCONTAINER_H
