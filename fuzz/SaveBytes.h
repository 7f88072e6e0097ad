#ifndef ZLIBVIDEO_FUZZ_SAVEBYTES_H
#define ZLIBVIDEO_FUZZ_SAVEBYTES_H

#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "fuzz/Messages.h"

namespace zlibvideo {

/// The name of a file in memory that has these bytes until the next call.
inline std::string SaveBytes(const std::uint8_t* data, std::size_t size) {
  static const int kFile = memfd_create("input", MFD_CLOEXEC);
  Require(ftruncate(kFile, 0) == 0);
  Require(pwrite(kFile, data, size, 0) == static_cast<ssize_t>(size));
  return "/proc/self/fd/" + std::to_string(kFile);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_FUZZ_SAVEBYTES_H
