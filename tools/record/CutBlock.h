#ifndef ZLIBVIDEO_TOOLS_RECORD_CUTBLOCK_H
#define ZLIBVIDEO_TOOLS_RECORD_CUTBLOCK_H

#include <vector>

#include "grid/BitmapDataBlock.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// The part of `picture` that `block` covers, as the block's buffer has it: bottom row first.
/// REQUIRES: the block belongs to a grid over a picture of this size.
std::vector<unsigned char> CutBlock(const Picture& picture, const BitmapDataBlock& block);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_CUTBLOCK_H
