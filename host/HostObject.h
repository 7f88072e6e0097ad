#ifndef ZLIBVIDEO_HOST_HOSTOBJECT_H
#define ZLIBVIDEO_HOST_HOSTOBJECT_H

#include "Export.h"

/// An object of the host's that the decoder base owns (a texture, a buffer, a codec of the
/// graphics processor). The component knows only that it can be destroyed.
class ZLIBVIDEO_EXPORT HostObject {
 public:
  HostObject() = default;
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;
  virtual ~HostObject() = default;
};

#endif  // ZLIBVIDEO_HOST_HOSTOBJECT_H
