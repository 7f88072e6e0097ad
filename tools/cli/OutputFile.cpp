#include "tools/cli/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <vector>

#include "tools/cli/InputFile.h"
#include "tools/cli/TemporaryFiles.h"
#include "tools/cli/ToolError.h"

namespace zlibvideo {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = 0666;

/// A file, whatever name leads to it.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  bool isRegular = false;
  bool operator==(const FileIdentity&) const = default;
};

/// Of the file that `path` names, or that is open as `descriptor` for "-".
std::optional<FileIdentity> Identify(const std::string& path, int descriptor) {
  struct stat info = {};
  const int result =
      path == kStandardStreamName ? fstat(descriptor, &info) : stat(path.c_str(), &info);
  if (result != 0) return std::nullopt;
  return FileIdentity{info.st_dev, info.st_ino, S_ISREG(info.st_mode)};
}

/// Outputs are opened in many places, some under names that are made up on the way; all of them
/// must know the inputs, as far as they are regular files.
std::vector<FileIdentity> gInputs;

void RefuseInput(const std::string& output) {
  const std::optional<FileIdentity> file = Identify(output, STDOUT_FILENO);
  if (!file || std::find(gInputs.begin(), gInputs.end(), *file) == gInputs.end()) return;
  throw ToolError(OutputName(output) + ": is also the input; choose another output");
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

void CreateFolder(const fs::path& folder, const std::string& name) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw ToolError::FromSystem(name, "its folder cannot be created", error.value());
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
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    fStream = std::fopen(fTarget.c_str(), "wb");
    if (fStream == nullptr) Fail("cannot be opened for writing");
    return;
  }
  CreateFolder(target.parent_path(), fName);
  const bool replaces = fs::exists(status);
  // Renaming alone would ask for no permission to write to what is replaced.
  if (replaces && access(fTarget.c_str(), W_OK) != 0) Fail("cannot be opened for writing");
  const mode_t mode =
      replaces ? static_cast<mode_t>(status.permissions() & fs::perms::all) : kNewFileMode;
  OpenTemporary(target.parent_path().string(), mode);
  // What the umask withheld; not every file system has modes to set.
  if (replaces) fchmod(fileno(fStream), mode);
}

OutputFile::~OutputFile() {
  if (fStream != nullptr && fStream != stdout) std::fclose(fStream);
  if (!fTemporary.empty()) RemoveTemporary();
}

void OutputFile::Write(const void* bytes, std::size_t size) {
  if (size == 0) return;  // an empty vector has no address that fwrite may be given
  errno = 0;
  if (std::fwrite(bytes, 1, size, fStream) != size) Fail("cannot be written");
}

void OutputFile::WriteLine(const std::string& line) {
  Write(line + '\n');
  if (fTemporary.empty() && std::fflush(fStream) != 0) Fail("cannot be written");
}

void OutputFile::Commit() {
  errno = 0;
  std::FILE* stream = fStream;
  fStream = nullptr;
  const int result = stream == stdout ? std::fflush(stream) : std::fclose(stream);
  if (result != 0) Fail("cannot be written");
  if (fTemporary.empty()) return;

  const SignalBlock block;
  if (std::rename(fTemporary.c_str(), fTarget.c_str()) != 0) Fail("cannot be put in place");
  UnregisterTemporary(fTemporary);
  fTemporary.clear();
}

void OutputFile::OpenTemporary(const std::string& folder, mode_t mode) {
  const SignalBlock block;
  int descriptor = -1;
  for (int attempt = 0; descriptor < 0; ++attempt) {
    fTemporary = folder + "/.zlibvideo-" + std::to_string(getpid()) + "-" +
                 std::to_string(attempt) + ".part";
    descriptor = open(fTemporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0 && errno != EEXIST) {
      fTemporary.clear();
      Fail("cannot be created");
    }
  }
  RegisterTemporary(fTemporary);
  fStream = fdopen(descriptor, "wb");
  if (fStream != nullptr) return;
  const int error = errno;
  close(descriptor);
  RemoveTemporary();
  throw ToolError::FromSystem(fName, "cannot be created", error);
}

void OutputFile::RemoveTemporary() {
  const SignalBlock block;
  unlink(fTemporary.c_str());
  UnregisterTemporary(fTemporary);
  fTemporary.clear();
}

void OutputFile::Fail(const char* what) const {
  const bool toStandardOutput = fTarget.empty();
  if (toStandardOutput && errno == EPIPE) throw ToolError::ReaderLeft();
  throw ToolError::FromSystem(fName, what, errno);
}

void ProtectInput(const std::string& input) {
  const std::optional<FileIdentity> file = Identify(input, STDIN_FILENO);
  if (file && file->isRegular) gInputs.push_back(*file);
}

bool IsStandardOutput(const std::string& output) {
  if (output == kStandardStreamName) return true;
  const std::optional<FileIdentity> file = Identify(output, STDOUT_FILENO);
  return file && file == Identify(kStandardStreamName, STDOUT_FILENO);
}

bool IsWrittenDirectly(const std::string& output) {
  std::error_code error;
  const fs::file_status status = fs::status(output, error);
  return IsStandardOutput(output) || (fs::exists(status) && !fs::is_regular_file(status));
}

bool IsTerminal(const std::string& output) {
  if (IsStandardOutput(output)) return isatty(STDOUT_FILENO) == 1;
  std::error_code error;
  if (!fs::is_character_file(output, error)) return false;
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
