// The linker routes calls of zlib through here (--wrap).

#include "tests/UntidyZlib.h"

#include <zlib.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

using zlibvideo::LinkedZlib;

// Of the address sanitizer, if the program has it.
extern "C" [[gnu::weak]] void* __asan_region_is_poisoned(void* begin, std::size_t size);

namespace zlibvideo {

UntidyZlib& LinkedZlib() {
  static thread_local UntidyZlib zlib;
  return zlib;
}

}  // namespace zlibvideo

static void RequireWhole(const unsigned char* bytes, std::size_t size) {
  if (__asan_region_is_poisoned == nullptr) return;
  if (__asan_region_is_poisoned(const_cast<unsigned char*>(bytes), size) != nullptr) std::abort();
}

static void LeaveRubbish(unsigned char* rest, std::size_t size) {
  if (rest != nullptr) std::memset(rest, zlibvideo::UntidyZlib::kRubbish, size);
}

extern "C" int __real_inflate(z_stream*, int);
extern "C" int __wrap_inflate(z_stream* stream, int flush) {
  RequireWhole(stream->next_in, stream->avail_in);
  RequireWhole(stream->next_out, stream->avail_out);
  const int result = __real_inflate(stream, flush);
  LeaveRubbish(stream->next_out, stream->avail_out);
  return result;
}

extern "C" int __real_uncompress(Bytef*, uLongf*, const Bytef*, uLong);
extern "C" int __wrap_uncompress(Bytef* out, uLongf* size, const Bytef* in, uLong inSize) {
  const uLongf room = *size;
  RequireWhole(in, inSize);
  RequireWhole(out, room);
  const int result = __real_uncompress(out, size, in, inSize);
  LeaveRubbish(out + *size, room - *size);
  return result;
}

extern "C" int __real_inflateInit2_(z_stream*, int, const char*, int);
extern "C" int __wrap_inflateInit2_(z_stream* stream, int windowBits, const char* version,
                                    int recordSize) {
  if (LinkedZlib().failsToBegin) return Z_MEM_ERROR;
  return __real_inflateInit2_(stream, windowBits, version, recordSize);
}

extern "C" int __real_inflateEnd(z_stream*);
extern "C" int __wrap_inflateEnd(z_stream* stream) {
  const int result = __real_inflateEnd(stream);
  return LinkedZlib().failsToEnd ? Z_STREAM_ERROR : result;
}
