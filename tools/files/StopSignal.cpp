#include "tools/files/StopSignal.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

namespace zlibvideo {
namespace {

std::atomic<int> gSignal = 0;
std::atomic<const char*> gLine = nullptr;
static_assert(decltype(gSignal)::is_always_lock_free && decltype(gLine)::is_always_lock_free,
              "the handler uses both");

extern "C" void NoteSignal(int signal) {
  int none = 0;
  if (!gSignal.compare_exchange_strong(none, signal)) {
    // Programs may send other signals several times at once: `timeout` does, and so does a terminal
    // that closes. A person who wants no more waiting presses Ctrl-C.
    if (signal != SIGINT) return;
    ::signal(SIGINT, SIG_DFL);
    raise(SIGINT);
    return;
  }
  const int error = errno;
  const char* const line = gLine;
  if (line != nullptr) static_cast<void>(!write(STDERR_FILENO, line, std::strlen(line)));
  errno = error;
}

}  // namespace

void InstallSignalHandlers() {
  struct sigaction action = {};
  action.sa_handler = NoteSignal;  // without SA_RESTART: a read that waits is interrupted
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction inherited = {};
    sigaction(signal, nullptr, &inherited);
    if (inherited.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
}

int StopSignal() {
  return gSignal;
}

void PrintAtStopSignal(const char* line) {
  gLine = line;
}

void EndByStopSignal() {
  if (gSignal == 0) return;
  ::signal(gSignal, SIG_DFL);
  raise(gSignal);
}

}  // namespace zlibvideo
