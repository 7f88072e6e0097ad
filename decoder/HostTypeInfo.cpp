// The decoder's type information refers to the type information of its base, which the host
// defines. For a host that is compiled without type information (-fno-rtti), it is defined here. A
// host's own definition has precedence. Names and layout are those of the Itanium C++ ABI for a
// class without bases.

#include "host/Export.h"

// A component that is compiled without type information does not refer to it.
#ifdef __cpp_rtti

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

/// The operations of type information of this kind, which begin after two entries.
extern const void* const _ZTVN10__cxxabiv117__class_type_infoE[];

[[gnu::weak]] extern ZLIBVIDEO_EXPORT const char _ZTS17VideoDecompressor[] = "17VideoDecompressor";

[[gnu::weak]] extern ZLIBVIDEO_EXPORT const void* const _ZTI17VideoDecompressor[] = {
    _ZTVN10__cxxabiv117__class_type_infoE + 2, _ZTS17VideoDecompressor};

}  // extern "C"
// NOLINTEND(readability-identifier-naming)
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

#endif
