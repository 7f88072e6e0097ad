#include "tools/files/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = 0666;

/// What there is to know of the file that `path` names, or that is open as `descriptor` for "-".
std::optional<struct stat> Identify(const std::string& path, int descriptor) {
  struct stat info = {};
  const int result =
      path == kStandardStreamName ? fstat(descriptor, &info) : stat(path.c_str(), &info);
  return result == 0 ? std::optional(info) : std::nullopt;
}

bool IsSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Outputs are opened in many places, some under names that are made up on the way; all of them
/// must know the inputs, as far as they are regular files.
std::vector<struct stat> gInputs;

void RefuseInput(const std::string& output) {
  const auto file = Identify(output, STDOUT_FILENO);
  for (const struct stat& input : gInputs) {
    if (!file || !IsSame(*file, input)) continue;
    throw ToolError(OutputName(output) + ": is also the input; choose another output");
  }
}

/// Where `path` leads to when it is a symbolic link: renaming onto the link would replace it.
fs::path FollowLinks(const std::string& path) {
  constexpr int kMaxLinks = 40;  // the system follows no more either
  std::error_code error;
  fs::path target = fs::absolute(path, error);
  for (int links = 0; links < kMaxLinks; ++links) {
    const fs::path resolved = fs::weakly_canonical(target, error);
    if (error) break;
    // A link to something that does not exist is taken for a file that does not exist.
    const fs::path link = fs::read_symlink(resolved, error);
    if (error) return resolved;
    target = resolved.parent_path() / link;
  }
  return target;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : fName(OutputName(path)) {
  RefuseInput(path);
  if (IsStandardOutput(path)) {
    fStream = stdout;
    return;
  }
  const fs::path target = FollowLinks(path);
  fTarget = target.string();
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (!fs::status_known(status)) {
    throw ToolError::FromSystem(fName, "cannot be opened for writing", error.value());
  }
  if (fs::is_directory(status) || !fs::path(path).has_filename() || !target.has_filename()) {
    throw ToolError(fName + ": is a directory, not a file");
  }
  const bool exists = fs::exists(status);
  if (exists && !fs::is_regular_file(status)) {
    fStream = std::fopen(fTarget.c_str(), "wb");
    if (fStream == nullptr) Fail("cannot be opened for writing");
    return;
  }
  fs::create_directories(target.parent_path(), error);
  if (error) throw ToolError::FromSystem(fName, "its folder cannot be created", error.value());
  // Renaming alone would ask for no permission to write to what is replaced.
  if (exists && access(fTarget.c_str(), W_OK) != 0) Fail("cannot be opened for writing");
  const mode_t mode =
      exists ? static_cast<mode_t>(status.permissions() & fs::perms::all) : kNewFileMode;
  fTemporary.emplace(target.parent_path().string(), mode);
  fStream = fTemporary->Stream();
  if (fStream == nullptr) Fail("cannot be created");
  // What the umask withheld; not every file system has modes to set.
  if (exists) fchmod(fileno(fStream), mode);
}

OutputFile::~OutputFile() {
  if (fStream != nullptr && fStream != stdout) std::fclose(fStream);
}

void OutputFile::Write(const void* bytes, std::size_t size) {
  if (size == 0) return;  // an empty vector has no address that fwrite may be given
  errno = 0;
  if (std::fwrite(bytes, 1, size, fStream) != size) Fail("cannot be written");
}

void OutputFile::WriteLine(const std::string& line) {
  Write(line + '\n');
  if (!fTemporary) Flush();
}

void OutputFile::Flush() {
  if (std::fflush(fStream) != 0) Fail("cannot be written");
}

void OutputFile::Commit() {
  errno = 0;
  std::FILE* stream = std::exchange(fStream, nullptr);
  const int result = stream == stdout ? std::fflush(stream) : std::fclose(stream);
  if (result != 0) Fail("cannot be written");
  if (fTemporary && !fTemporary->Rename(fTarget)) Fail("cannot be put in place");
}

void OutputFile::CommitFirst(std::uint64_t size) {
  // What is still to be written may fail as before; none of it is among the first bytes.
  std::FILE* stream = std::exchange(fStream, nullptr);
  if (stream != nullptr && stream != stdout) std::fclose(stream);
  if (!fTemporary) return;
  if (!fTemporary->Truncate(size)) Fail("cannot be cut to what is whole");
  if (fTemporary->Rename(fTarget)) return;
  const int error = errno;
  throw ToolError::FromSystem(fName, "cannot be put in place and stays " + fTemporary->Keep(),
                              error);
}

void OutputFile::Fail(const char* what) const {
  const bool toStandardOutput = fTarget.empty();
  if (toStandardOutput && errno == EPIPE) throw ToolError::ReaderLeft();
  throw ToolError::FromSystem(fName, what, errno);
}

void ProtectInput(const std::string& input) {
  const auto file = Identify(input, STDIN_FILENO);
  if (file && S_ISREG(file->st_mode)) gInputs.push_back(*file);
}

bool IsStandardOutput(const std::string& output) {
  if (output == kStandardStreamName) return true;
  const auto file = Identify(output, STDOUT_FILENO);
  const auto standard = Identify(kStandardStreamName, STDOUT_FILENO);
  return file && standard && IsSame(*file, *standard);
}

bool IsWrittenDirectly(const std::string& output) {
  const auto file = Identify(output, STDOUT_FILENO);
  return IsStandardOutput(output) || (file && !S_ISREG(file->st_mode));
}

bool IsTerminal(const std::string& output) {
  if (IsStandardOutput(output)) return isatty(STDOUT_FILENO) == 1;
  const auto file = Identify(output, STDOUT_FILENO);
  if (!file || !S_ISCHR(file->st_mode)) return false;
  const int descriptor = open(output.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool isTerminal = isatty(descriptor) == 1;
  close(descriptor);
  return isTerminal;
}

void RefuseTerminal(const std::string& output) {
  if (!IsTerminal(output)) return;
  throw ToolError(OutputName(output) + ": is a terminal; redirect it or give -o FILE");
}

std::string OutputName(const std::string& path) {
  return IsStandardOutput(path) ? "standard output" : path;
}

}  // namespace zlibvideo
