#include "tools/cli/TemporaryFiles.h"

#include <unistd.h>

#include <algorithm>
#include <vector>

namespace zlibvideo {
namespace {

constexpr int kFatalSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

/// A signal handler is called without a context, so what it needs is global. It is changed only
/// while the signals are blocked; the tool is single-threaded.
std::vector<std::string> gTemporaries;

extern "C" void RemoveTemporariesAndDie(int signal) {
  for (const std::string& path : gTemporaries) unlink(path.c_str());
  // Of what prints a line, only `write` is async-signal-safe. It starts a new line, in case a
  // progress bar stands on this one.
  constexpr char kLine[] = "\nzlibvideo: stopped by a signal, unfinished output is removed\n";
  const ssize_t written = write(STDERR_FILENO, kLine, sizeof(kLine) - 1);
  static_cast<void>(written);
  // The handler is reset after one delivery: the second takes the default action.
  raise(signal);
}

sigset_t FatalSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : kFatalSignals) sigaddset(&set, signal);
  return set;
}

}  // namespace

void InstallSignalHandlers() {
  struct sigaction action = {};
  action.sa_handler = RemoveTemporariesAndDie;
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

SignalBlock::SignalBlock() {
  const sigset_t set = FatalSignals();
  sigprocmask(SIG_BLOCK, &set, &fPrevious);
}

SignalBlock::~SignalBlock() {
  sigprocmask(SIG_SETMASK, &fPrevious, nullptr);
}

void RegisterTemporary(const std::string& path) {
  gTemporaries.push_back(path);
}

void UnregisterTemporary(const std::string& path) {
  gTemporaries.erase(std::remove(gTemporaries.begin(), gTemporaries.end(), path),
                     gTemporaries.end());
}

}  // namespace zlibvideo
