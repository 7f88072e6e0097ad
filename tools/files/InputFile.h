#ifndef ZLIBVIDEO_TOOLS_FILES_INPUTFILE_H
#define ZLIBVIDEO_TOOLS_FILES_INPUTFILE_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace zlibvideo {

/// The file name that stands for standard input or standard output.
inline constexpr const char* kStandardStreamName = "-";

/// Closes a stream, but leaves standard input open.
struct CloseInput {
  void operator()(std::FILE* stream) const;
};
using InputFile = std::unique_ptr<std::FILE, CloseInput>;

/// Opens `path` for reading, or standard input for "-". Throws `ToolError` when it cannot be opened
/// or is a directory.
InputFile OpenInput(const std::string& path);

/// `path` as messages show it: "standard input" for "-".
std::string InputName(const std::string& path);

/// Size in bytes when the stream is a regular file.
std::optional<std::uint64_t> InputSize(std::FILE* stream);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_INPUTFILE_H
