#ifndef ZLIBVIDEO_DECODER_VERSION_H
#define ZLIBVIDEO_DECODER_VERSION_H

#include "../host/Export.h"

// The version of the interface, for `#if`. The build reads it from here. A new major version breaks
// the interface towards the host or the embedder, a minor version adds to it.
// NOLINTBEGIN(cppcoreguidelines-macro-usage): `#if` sees no constants
#define ZLIBVIDEO_VERSION_MAJOR 2
#define ZLIBVIDEO_VERSION_MINOR 0
#define ZLIBVIDEO_VERSION_PATCH 0
// NOLINTEND(cppcoreguidelines-macro-usage)

namespace zlibvideo {

/// The version of the library that runs, as in "2.0.0". A shared library may have another version
/// than the headers that were compiled. Never null, valid for good.
ZLIBVIDEO_EXPORT const char* LibraryVersion();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_DECODER_VERSION_H
