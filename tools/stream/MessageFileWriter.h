#ifndef ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILEWRITER_H
#define ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILEWRITER_H

#include <cstddef>
#include <string>

#include "tools/cli/OutputFile.h"

namespace zlibvideo {

/// Writes a message file, as `MessageFileReader` reads it.
class MessageFileWriter {
 public:
  /// Writes to `path`, or standard output for "-", as `OutputFile` does.
  explicit MessageFileWriter(const std::string& path) : fFile(path) {}

  /// Appends one message. Throws `ToolError` when it cannot be written, or is longer than 24 bits
  /// can express.
  void Write(const unsigned char* bytes, std::size_t length);
  /// Puts the file under its name; without it nothing is left.
  void Commit() { fFile.Commit(); }

 private:
  OutputFile fFile;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILEWRITER_H
