#ifndef ZLIBVIDEO_TESTS_UNTIDYZLIB_H
#define ZLIBVIDEO_TESTS_UNTIDYZLIB_H

namespace zlibvideo {

/// The zlib of programs that `zlibvideo_link_untidy_zlib` links. It calls the linked zlib, and
/// fills the room behind the output with rubbish, as a library that copies by vectors may. Calls
/// fail on demand. With the address sanitizer, which does not see into zlib, it checks input and
/// room.
struct UntidyZlib {
  static constexpr unsigned char kRubbish = 0x5A;

  bool failsToBegin = false;  // inflateInit2_
  bool failsToEnd = false;    // inflateEnd, which releases the stream all the same
};

UntidyZlib& LinkedZlib();  // of this thread

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_UNTIDYZLIB_H
