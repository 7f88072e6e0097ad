#ifndef ZLIBVIDEO_TESTS_UNTIDYZLIB_H
#define ZLIBVIDEO_TESTS_UNTIDYZLIB_H

#include <zlib.h>

#include <set>

namespace zlibvideo {

/// The zlib of programs that `zlibvideo_link_untidy_zlib` links: the linked zlib, but each call
/// fills what it left of the room that it was offered with rubbish, as a library that copies by
/// vectors may leave it, and calls can be made to fail. With the address sanitizer, both ranges of
/// a call are checked: zlib is not compiled with it.
struct UntidyZlib {
  static constexpr unsigned char kRubbish = 0x5A;

  bool failsToBegin = false;  // inflateInit2_
  bool failsToEnd = false;    // inflateEnd, which releases the stream all the same
  std::set<const z_stream*> open = {};
};

UntidyZlib& LinkedZlib();  // the thread's own

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_UNTIDYZLIB_H
