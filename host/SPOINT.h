#ifndef ZLIBVIDEO_HOST_SPOINT_H
#define ZLIBVIDEO_HOST_SPOINT_H

#include <cstdint>

/// A point in pixels. The component passes no points.
struct SPOINT {
  std::int32_t x;
  std::int32_t y;
};

#endif  // ZLIBVIDEO_HOST_SPOINT_H
