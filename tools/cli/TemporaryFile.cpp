#include "tools/cli/TemporaryFile.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace zlibvideo {
namespace {

/// The file to be removed by a signal, whose handler is called without a context. It is named
/// before it is created and until it is renamed: removing what is not there does no harm.
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

}  // namespace

void InstallSignalHandlers() {
  constexpr int kFatalSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};
  struct sigaction action = {};
  action.sa_handler = RemoveTemporaryAndDie;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : kFatalSignals) sigaddset(&action.sa_mask, signal);
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
  int descriptor = -1;
  errno = EEXIST;
  for (int attempt = 0; descriptor < 0 && errno == EEXIST; ++attempt) {
    gTemporary = nullptr;
    fPath = folder + "/.zlibvideo-" + std::to_string(getpid()) + "-" + std::to_string(attempt) +
            ".part";
    gTemporary = fPath.c_str();
    descriptor = open(fPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  }
  if (descriptor < 0) return;
  fStream = fdopen(descriptor, "wb");
  if (fStream == nullptr) close(descriptor);
}

TemporaryFile::~TemporaryFile() {
  if (gTemporary == nullptr) return;
  unlink(fPath.c_str());
  gTemporary = nullptr;
}

bool TemporaryFile::Rename(const std::string& target) {
  if (std::rename(fPath.c_str(), target.c_str()) != 0) return false;
  gTemporary = nullptr;
  return true;
}

}  // namespace zlibvideo
