#include "tools/files/BlockedSignals.h"

namespace zlibvideo {

sigset_t FatalSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : kFatalSignals) sigaddset(&signals, signal);
  return signals;
}

BlockedSignals::BlockedSignals() {
  const sigset_t fatal = FatalSignals();
  pthread_sigmask(SIG_BLOCK, &fatal, &fBefore);
}

BlockedSignals::~BlockedSignals() {
  pthread_sigmask(SIG_SETMASK, &fBefore, nullptr);
}

}  // namespace zlibvideo
