#ifndef ZLIBVIDEO_HOST_GUARDED_H
#define ZLIBVIDEO_HOST_GUARDED_H

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "Export.h"

/// A value beside a check word that is derived from it. If the two disagree, reading stops the
/// process: a stray write over a bitmap's address or size is caught before the component uses it.
template <typename T>
class ZLIBVIDEO_EXPORT Guarded {
  static_assert(sizeof(T) <= sizeof(std::uint64_t));

 public:
  Guarded() = default;

  void Set(T value) {
    fValue = value;
    fCheck = CheckOf(value);
  }

  T Get() const {
    if (fCheck != CheckOf(fValue)) std::abort();
    return fValue;
  }

 private:
  static constexpr std::uint64_t kKey = 0x9E3779B97F4A7C15;

  static std::uint64_t CheckOf(T value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof(value));
    return bits ^ kKey;
  }

  T fValue = {};
  std::uint64_t fCheck = CheckOf({});
};

#endif  // ZLIBVIDEO_HOST_GUARDED_H
