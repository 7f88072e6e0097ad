#ifndef ZLIBVIDEO_FUZZ_OPENBYTES_H
#define ZLIBVIDEO_FUZZ_OPENBYTES_H

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/Mutation.h"

namespace zlibvideo {

/// A descriptor of a file that has these bytes, which the caller owns.
inline int OpenBytes(const std::uint8_t* data, std::size_t size) {
  const int descriptor = memfd_create("input", MFD_CLOEXEC);
  Require(write(descriptor, data, size) == static_cast<ssize_t>(size));
  Require(lseek(descriptor, 0, SEEK_SET) == 0);
  return descriptor;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_FUZZ_OPENBYTES_H
