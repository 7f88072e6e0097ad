#include "tools/files/TemporaryFile.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cassert>
#include <cerrno>

#include "tools/files/BlockedSignals.h"

namespace zlibvideo {
namespace {

/// The file to be removed by a signal, whose handler is called without a context. It is named from
/// when it is created, and no signal comes between, until it is renamed or removed.
std::atomic<const char*> gTemporary = nullptr;
static_assert(decltype(gTemporary)::is_always_lock_free);

extern "C" void RemoveTemporaryAndDie(int signal) {
  const char* const path = gTemporary;
  if (path != nullptr) unlink(path);
  // Of what prints a line, only `write` is async-signal-safe. It starts a new line, in case a
  // progress bar stands on this one.
  constexpr char kLine[] = "\nzlibvideo: stopped by a signal, unfinished output is removed\n";
  const ssize_t written = write(STDERR_FILENO, kLine, sizeof(kLine) - 1);
  static_cast<void>(written);
  // The handler is reset after one delivery: the second takes the default action.
  raise(signal);
}

/// Creates the file and names it to the handler. The descriptor; -1, with `errno`, when there
/// already is one of that name or it cannot be created: then the handler does not know the name.
int CreateTemporary(const std::string& path, mode_t mode) {
  const BlockedSignals blocked;
  const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  if (descriptor >= 0) gTemporary = path.c_str();
  return descriptor;
}

}  // namespace

void InstallSignalHandlers() {
  struct sigaction action = {};
  action.sa_handler = RemoveTemporaryAndDie;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  action.sa_mask = FatalSignals();
  for (const int signal : kFatalSignals) {
    struct sigaction inherited = {};
    sigaction(signal, nullptr, &inherited);
    // A parent such as nohup may have chosen that the signal is ignored.
    if (inherited.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
  struct sigaction ignore = {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &ignore, nullptr);
  sigaction(SIGXFSZ, &ignore, nullptr);
}

TemporaryFile::TemporaryFile(const std::string& folder, mode_t mode) {
  assert(gTemporary == nullptr);
  int descriptor = -1;
  errno = EEXIST;
  for (int attempt = 0; descriptor < 0 && errno == EEXIST; ++attempt) {
    fPath = folder + "/.zlibvideo-" + std::to_string(getpid()) + "-" + std::to_string(attempt) +
            ".part";
    descriptor = CreateTemporary(fPath, mode);
  }
  if (descriptor < 0) return;
  fStream = fdopen(descriptor, "wb");
  if (fStream != nullptr) return;
  const int error = errno;
  close(descriptor);
  errno = error;
}

TemporaryFile::~TemporaryFile() {
  if (gTemporary != fPath.c_str()) return;  // renamed, or never created
  unlink(fPath.c_str());
  gTemporary = nullptr;
}

bool TemporaryFile::Truncate(std::uint64_t size) {
  return truncate(fPath.c_str(), static_cast<off_t>(size)) == 0;
}

const std::string& TemporaryFile::Keep() {
  gTemporary = nullptr;
  return fPath;
}

bool TemporaryFile::Rename(const std::string& target) {
  if (std::rename(fPath.c_str(), target.c_str()) != 0) return false;
  gTemporary = nullptr;
  return true;
}

}  // namespace zlibvideo
