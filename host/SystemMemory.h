#ifndef ZLIBVIDEO_HOST_SYSTEMMEMORY_H
#define ZLIBVIDEO_HOST_SYSTEMMEMORY_H

#include "Export.h"

namespace Vorn {

/// The purpose of an allocation: the storage of a block record, or any other purpose.
enum FixedMallocOpts : int {
  kFixedMallocDefault = 0,
  kFixedMallocBlockRecord = 1,
};

/// Host service. Returns at least `size` bytes, aligned for any object, that stay valid until
/// `SystemDelete`. On exhaustion the host throws `std::bad_alloc`, which reaches the caller of the
/// component, or ends the process. Any other exception ends the process. Null is possible too: the
/// component never writes through it, but for the decoder itself null ends the process. The bytes
/// need not be zero, but pixels that a stream leaves out show the bytes as they are.
ZLIBVIDEO_EXPORT void* SystemNew(unsigned long size, FixedMallocOpts opts);

/// Host service. Releases memory that `SystemNew` returned. Never called with null. Must not
/// throw: an exception here ends the process.
ZLIBVIDEO_EXPORT void SystemDelete(void* memory);

}  // namespace Vorn

#endif  // ZLIBVIDEO_HOST_SYSTEMMEMORY_H
