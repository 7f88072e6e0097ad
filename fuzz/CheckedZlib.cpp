// zlib is not compiled with the sanitizers, so a range that it is told wrongly would go unnoticed.
// The linker routes calls through here (--wrap), where both ranges are checked.

#include <sanitizer/asan_interface.h>
#include <zlib.h>

#include "fuzz/Mutation.h"

static void RequireWhole(const unsigned char* bytes, std::size_t size) {
  zlibvideo::Require(__asan_region_is_poisoned(const_cast<unsigned char*>(bytes), size) == nullptr);
}

extern "C" int __real_inflate(z_stream*, int);
extern "C" int __wrap_inflate(z_stream* stream, int flush) {
  RequireWhole(stream->next_in, stream->avail_in);
  RequireWhole(stream->next_out, stream->avail_out);
  return __real_inflate(stream, flush);
}

extern "C" int __real_uncompress(Bytef*, uLongf*, const Bytef*, uLong);
extern "C" int __wrap_uncompress(Bytef* out, uLongf* room, const Bytef* in, uLong size) {
  RequireWhole(in, size);
  RequireWhole(out, *room);
  return __real_uncompress(out, room, in, size);
}
