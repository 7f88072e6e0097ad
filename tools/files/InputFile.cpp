#include "tools/files/InputFile.h"

#include <sys/stat.h>

#include <cerrno>

#include "tools/files/ToolError.h"

namespace zlibvideo {

void CloseInput::operator()(std::FILE* stream) const {
  if (stream != stdin) std::fclose(stream);
}

InputFile OpenInput(const std::string& path) {
  const std::string name = InputName(path);
  InputFile file(path == kStandardStreamName ? stdin : std::fopen(path.c_str(), "rb"));
  struct stat info = {};
  if (file == nullptr || fstat(fileno(file.get()), &info) != 0) {
    throw ToolError::FromSystem(name, "cannot be opened", errno);
  }
  if (S_ISDIR(info.st_mode)) throw ToolError(name + ": is a directory, not a file");
  return file;
}

std::string InputName(const std::string& path) {
  return path == kStandardStreamName ? "standard input" : path;
}

std::optional<std::uint64_t> InputSize(std::FILE* stream) {
  struct stat info = {};
  if (fstat(fileno(stream), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return static_cast<std::uint64_t>(info.st_size);
}

}  // namespace zlibvideo
