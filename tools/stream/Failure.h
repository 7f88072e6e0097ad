#ifndef ZLIBVIDEO_TOOLS_STREAM_FAILURE_H
#define ZLIBVIDEO_TOOLS_STREAM_FAILURE_H

#include <optional>
#include <string>

namespace zlibvideo {

/// One record's place in its message. Rows and columns count from 0, row 0 at the bottom of the
/// picture; passes count from 1.
struct BlockPlace {
  int pass = 1;
  int row = 0;
  int column = 0;

  bool operator==(const BlockPlace&) const = default;
};

/// Why a message was not decoded.
struct Failure {
  /// What is wrong, as a sentence without its full stop.
  std::string what;
  /// Where, in bytes from the start of the message: of a record, the start of its size field.
  unsigned int offset = 0;
  /// The block whose record it is, if it is a record.
  std::optional<BlockPlace> block;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_FAILURE_H
