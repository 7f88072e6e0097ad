#ifndef ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H
#define ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H

#include <cstdint>
#include <string>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/stream/StreamDecoder.h"

namespace zlibvideo {

/// The arguments of `decode`. File names may be "-".
struct DecodeOptions {
  std::string input;
  /// Null with `verify`.
  const OutputFormat* format = nullptr;
  OutputOptions output;
  /// A file of hash lines to compare with. Empty for no comparison.
  std::string verify;
  /// Numbers, from 1, of the first and the last message whose pictures are written.
  std::uint64_t from = 1;
  std::uint64_t to = kToTheEnd;
  bool quiet = false;

  bool WritesPictures() const { return format != nullptr && format->WritesPictures(); }
};

/// Decodes the messages of a message file up to number `to` and writes or compares their pictures.
/// If a message fails, prints a line to stderr and goes on. Keeps the pictures before an error of
/// the input. Returns an `ExitStatus`. Throws `ToolError` when an input or output cannot be used.
int RunDecode(const DecodeOptions& options);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H
