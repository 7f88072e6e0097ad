#ifndef ZLIBVIDEO_HOST_EXPORT_H
#define ZLIBVIDEO_HOST_EXPORT_H

/// The component is compiled with hidden symbols. What crosses the border of its shared library,
/// in either direction, is marked with the first macro: the host services that it calls and the
/// classes that a host uses. The second takes single members of such a class out again.
#define ZLIBVIDEO_EXPORT __attribute__((visibility("default")))
#define ZLIBVIDEO_HIDDEN __attribute__((visibility("hidden")))

#endif  // ZLIBVIDEO_HOST_EXPORT_H
