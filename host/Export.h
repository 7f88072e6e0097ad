#ifndef ZLIBVIDEO_HOST_EXPORT_H
#define ZLIBVIDEO_HOST_EXPORT_H

/// The first macro marks all that crosses the border of the shared library, in either direction:
/// the host services that it calls and the classes that a host uses. The second macro hides single
/// members of such a class.
///
/// With the static library, whose users define ZLIBVIDEO_STATIC, there is no border to cross. The
/// marks are empty, and the host's own definitions are as visible as the host makes them.
#if defined(ZLIBVIDEO_STATIC) || defined(_WIN32)
#define ZLIBVIDEO_EXPORT
#define ZLIBVIDEO_HIDDEN
#else
#define ZLIBVIDEO_EXPORT __attribute__((visibility("default")))
#define ZLIBVIDEO_HIDDEN __attribute__((visibility("hidden")))
#endif

#endif  // ZLIBVIDEO_HOST_EXPORT_H
