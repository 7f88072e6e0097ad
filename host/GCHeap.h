#ifndef ZLIBVIDEO_HOST_GCHEAP_H
#define ZLIBVIDEO_HOST_GCHEAP_H

#include "Export.h"

namespace Vorn {

/// The host's heap, as far as the component knows it.
class ZLIBVIDEO_EXPORT GCHeap {
 public:
  /// Host service. Called instead of `SystemNew` if a request is too large to be made at all.
  /// Must not return.
  [[noreturn]] static void SignalObjectTooLarge();
};

}  // namespace Vorn

#endif  // ZLIBVIDEO_HOST_GCHEAP_H
