#ifndef ZLIBVIDEO_FUZZ_REQUIRE_H
#define ZLIBVIDEO_FUZZ_REQUIRE_H

#include <cstdlib>

namespace zlibvideo {

/// Stops the process, which makes the input a finding.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_FUZZ_REQUIRE_H
