#ifndef ZLIBVIDEO_BENCH_STREAMFILE_H
#define ZLIBVIDEO_BENCH_STREAMFILE_H

#include <string>
#include <vector>

namespace zlibvideo::bench {

using Bytes = std::vector<unsigned char>;

/// A recorded stream held in memory, so that no file is read while the clock runs.
struct StreamFile {
  /// File name without folder and extension.
  std::string name;
  std::vector<Bytes> messages;

  /// Throws `ToolError` when the file cannot be read whole or holds no message.
  static StreamFile Read(const std::string& path);
};

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_STREAMFILE_H
