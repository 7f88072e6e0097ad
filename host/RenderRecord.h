#ifndef ZLIBVIDEO_HOST_RENDERRECORD_H
#define ZLIBVIDEO_HOST_RENDERRECORD_H

class SBitmapCore;

/// What the host keeps to draw a video object. Its alignment leaves the lowest bit of its address
/// free for `SObject`'s flag.
struct RenderRecord {
  SBitmapCore* fBitmap = nullptr;
};

static_assert(alignof(RenderRecord) > 1);

#endif  // ZLIBVIDEO_HOST_RENDERRECORD_H
