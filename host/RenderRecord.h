#ifndef ZLIBVIDEO_HOST_RENDERRECORD_H
#define ZLIBVIDEO_HOST_RENDERRECORD_H

class SBitmapCore;

/// The host's record for drawing a video object. Its alignment leaves the lowest bit of its address
/// free for `SObject`'s flag.
struct RenderRecord {
  SBitmapCore* fBitmap = nullptr;
};

static_assert(alignof(RenderRecord) > 1);

#endif  // ZLIBVIDEO_HOST_RENDERRECORD_H
