#include "tools/files/EndSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <iterator>

#include "tools/files/BlockedSignals.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
namespace {

constexpr int kEndSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr long kSameWishMilliseconds = 500;

// A handler is called without a context. All of this is set before the handler is installed, or by
// the handler, which no other of the signals interrupts.
struct sigaction gBefore[std::size(kEndSignals)];
/// What waits at one end is woken from the other.
int gPipe[2] = {-1, -1};
volatile std::sig_atomic_t gSignal = 0;
timespec gFirst = {};

bool IsSameWish() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  const long passed =
      (now.tv_sec - gFirst.tv_sec) * 1000 + (now.tv_nsec - gFirst.tv_nsec) / 1'000'000;
  return passed < kSameWishMilliseconds;
}

void RestoreHandlers() {
  for (std::size_t i = 0; i < std::size(kEndSignals); ++i) {
    sigaction(kEndSignals[i], &gBefore[i], nullptr);
  }
}

extern "C" void NoteEndSignal(int signal) {
  const int error = errno;
  if (gSignal == 0) {
    gSignal = signal;
    clock_gettime(CLOCK_MONOTONIC, &gFirst);
    static_cast<void>(!write(gPipe[1], "", 1));
  } else if (!IsSameWish()) {
    RestoreHandlers();
    raise(signal);  // comes when this handler is left
  }
  errno = error;
}

}  // namespace

EndSignals::EndSignals() {
  assert(gPipe[0] < 0);
  if (pipe2(gPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
    throw ToolError::FromSystem("signals", "cannot be waited for", errno);
  }
  gSignal = 0;
  struct sigaction action = {};
  action.sa_handler = NoteEndSignal;
  action.sa_flags = SA_RESTART;
  action.sa_mask = FatalSignals();
  const BlockedSignals blocked;
  for (std::size_t i = 0; i < std::size(kEndSignals); ++i) {
    sigaction(kEndSignals[i], nullptr, &gBefore[i]);
    // A parent such as nohup may have chosen that the signal is ignored.
    if (gBefore[i].sa_handler != SIG_IGN) sigaction(kEndSignals[i], &action, nullptr);
  }
}

EndSignals::~EndSignals() {
  RestoreHandlers();
  for (int& descriptor : gPipe) {
    close(descriptor);
    descriptor = -1;
  }
}

bool EndSignals::HaveCome() const {
  return gSignal != 0;
}

int EndSignals::Descriptor() const {
  return gPipe[0];
}

void EndSignals::Obey() const {
  RestoreHandlers();
  raise(gSignal);
}

}  // namespace zlibvideo
