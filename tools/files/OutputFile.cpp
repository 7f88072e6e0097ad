#include "tools/files/OutputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/files/StopSignal.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kModeBits = 0777;
constexpr std::size_t kBufferBytes = 0x10000;

/// Facts of the file `path`, or of the open file `descriptor` for "-". Nothing if it does not
/// exist.
std::optional<struct stat> Examine(const std::string& path, int descriptor) {
  struct stat info = {};
  const int result =
      path == kStandardStreamName ? fstat(descriptor, &info) : stat(path.c_str(), &info);
  return result == 0 ? std::optional(info) : std::nullopt;
}

bool AreSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Outputs are opened in many places, some under names that are made up on the way. All of them
/// must know the inputs.
std::vector<struct stat> gInputs;

void RefuseInput(const std::string& output) {
  const auto file = Examine(output, STDOUT_FILENO);
  for (const struct stat& input : gInputs) {
    if (!file || !AreSame(*file, input)) continue;
    throw ToolError(OutputName(output) + ": is also the input; choose another output");
  }
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : fName(OutputName(path)) {
  RefuseInput(path);
  if (IsStandardOutput(path)) {
    fDescriptor = STDOUT_FILENO;
    return;
  }
  // A link to an existing file stays, and this file is replaced.
  std::error_code error;
  const fs::path target = fs::weakly_canonical(fs::absolute(path), error);
  if (error) ThrowSystemError(fName, "cannot be opened for writing", error.value());
  const auto old = Examine(target.string(), STDOUT_FILENO);
  if ((old && S_ISDIR(old->st_mode)) || !target.has_filename()) {
    throw ToolError(fName + ": is a directory, not a file");
  }
  if (old && !S_ISREG(old->st_mode)) {
    fDescriptor = open(target.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fDescriptor < 0) Fail("cannot be opened for writing");
    return;
  }
  fs::create_directories(target.parent_path(), error);
  if (error) ThrowSystemError(fName, "its folder cannot be created", error.value());
  // Renaming alone requires no permission to write to the file that is replaced.
  if (old && access(target.c_str(), W_OK) != 0) Fail("cannot be opened for writing");
  fTarget = target.string();
  OpenPart(old ? old->st_mode & kModeBits : kNewFileMode);
}

OutputFile::~OutputFile() {
  if (fDescriptor >= 0 && fDescriptor != STDOUT_FILENO) close(fDescriptor);
  if (!fPart.empty()) unlink(fPart.c_str());
}

void OutputFile::OpenPart(mode_t mode) {
  const std::string part = fTarget + ".part";
  fDescriptor = open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  if (fDescriptor < 0 && errno == EEXIST) {
    throw ToolError(part +
                    ": exists; it may be the output of a run that was stopped, or of one that "
                    "still writes: move or remove it");
  }
  if (fDescriptor < 0) Fail("cannot be opened for writing");
  fPart = part;
  if (mode != kNewFileMode) fchmod(fDescriptor, mode);  // with the bits that the umask withheld
}

void OutputFile::Write(const void* bytes, std::size_t size) {
  fBuffer.append(static_cast<const char*>(bytes), size);
  if (fBuffer.size() >= kBufferBytes) Flush();
}

void OutputFile::WriteLine(const std::string& line) {
  Write(line + '\n');
  if (fPart.empty()) Flush();
}

void OutputFile::Flush() {
  std::string_view rest = fBuffer;
  while (!rest.empty()) {
    // After a stop signal, the reader of a pipe has a last wait to make room.
    pollfd output = {fDescriptor, POLLOUT, 0};
    const int ready = poll(&output, 1, kWaitMilliseconds);
    if (ready == 0 && StopSignal() != 0) throw StoppedBySignal();
    if (ready <= 0) continue;
    const ssize_t written = write(fDescriptor, rest.data(), rest.size());
    if (written >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      Fail("cannot be written");
    }
  }
  fBuffer.clear();
}

void OutputFile::Commit() {
  Flush();
  CloseAndRename();
}

void OutputFile::CommitFirst(std::uint64_t size) {
  fBuffer.clear();
  if (fPart.empty()) return;
  if (ftruncate(fDescriptor, static_cast<off_t>(size)) != 0)
    Fail("cannot be cut to whole messages");
  CloseAndRename();
}

void OutputFile::CloseAndRename() {
  const int descriptor = std::exchange(fDescriptor, -1);
  if (descriptor != STDOUT_FILENO && close(descriptor) != 0) Fail("cannot be written");
  if (fPart.empty()) return;
  // A file that cannot have its name is whole, and stays.
  const std::string part = std::exchange(fPart, {});
  if (std::rename(part.c_str(), fTarget.c_str()) == 0) return;
  ThrowSystemError(part, "cannot be renamed to " + fTarget, errno);
}

void OutputFile::Fail(const char* problem) const {
  if (fTarget.empty() && errno == EPIPE) throw ReaderLeft();
  ThrowSystemError(fName, problem, errno);
}

void ProtectInput(const std::string& input) {
  const auto file = Examine(input, STDIN_FILENO);
  if (file && S_ISREG(file->st_mode)) gInputs.push_back(*file);
}

bool IsStandardOutput(const std::string& output) {
  if (output == kStandardStreamName) return true;
  const auto file = Examine(output, STDOUT_FILENO);
  const auto standard = Examine(kStandardStreamName, STDOUT_FILENO);
  return file && standard && AreSame(*file, *standard);
}

bool HasRoomForProgress(const std::string& output) {
  const auto standard = Examine(kStandardStreamName, STDOUT_FILENO);
  return isatty(STDERR_FILENO) == 1 &&
         (!IsStandardOutput(output) || (standard && S_ISREG(standard->st_mode)));
}

void RefuseTerminal(const std::string& output) {
  if (!IsStandardOutput(output) || isatty(STDOUT_FILENO) == 0) return;
  throw ToolError("standard output: is a terminal; redirect it or give -o FILE");
}

std::string OutputName(const std::string& path) {
  return IsStandardOutput(path) ? "standard output" : path;
}

}  // namespace zlibvideo
