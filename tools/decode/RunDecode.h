#ifndef ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H
#define ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H

#include <cstdint>
#include <string>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/stream/StreamDecoder.h"

namespace zlibvideo {

/// What `decode` is asked to do. File names may be "-".
struct DecodeOptions {
  std::string input;
  /// Null with `verify`, which is then done instead.
  const OutputFormat* format = nullptr;
  OutputOptions output;
  /// A file of hash lines to compare with.
  std::string verify;
  /// Which pictures are written, numbers from 1, both included.
  std::uint64_t from = 1;
  std::uint64_t to = kToTheEnd;
  bool quiet = false;

  bool WritesPictures() const { return format != nullptr && format->WritesPictures(); }
};

/// Decodes the messages of a message file up to the last one wanted and writes what `options` ask
/// for. A message that fails is reported on stderr and decoding goes on; what was decoded is kept
/// whatever comes after. Returns an `ExitStatus`; throws `ToolError` when an input or output cannot
/// be used.
int RunDecode(const DecodeOptions& options);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_RUNDECODE_H
