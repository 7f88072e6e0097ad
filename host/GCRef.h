#ifndef ZLIBVIDEO_HOST_GCREF_H
#define ZLIBVIDEO_HOST_GCREF_H

#include <cstddef>

namespace Vorn::GCAPI {

/// A reference to an object of the host's collected heap, passed by value, possibly null. The host
/// keeps the object alive for the length of the call that the reference is passed to.
template <typename T>
class GCRef {
 public:
  GCRef() = default;
  GCRef(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): null is passed as it is
  explicit GCRef(T* object) : fObject(object) {}

  explicit operator bool() const { return fObject != nullptr; }
  T* operator->() const { return fObject; }
  T* Get() const { return fObject; }

 private:
  T* fObject = nullptr;
};

}  // namespace Vorn::GCAPI

#endif  // ZLIBVIDEO_HOST_GCREF_H
