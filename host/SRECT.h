#ifndef ZLIBVIDEO_HOST_SRECT_H
#define ZLIBVIDEO_HOST_SRECT_H

#include <cstdint>

/// A rectangle in pixels. The greatest values are exclusive.
struct SRECT {
  std::int32_t xMin;
  std::int32_t xMax;
  std::int32_t yMin;
  std::int32_t yMax;
};

#endif  // ZLIBVIDEO_HOST_SRECT_H
