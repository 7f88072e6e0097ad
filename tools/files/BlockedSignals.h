#ifndef ZLIBVIDEO_TOOLS_FILES_BLOCKEDSIGNALS_H
#define ZLIBVIDEO_TOOLS_FILES_BLOCKEDSIGNALS_H

#include <signal.h>

namespace zlibvideo {

/// Those that end the program.
inline constexpr int kFatalSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

/// `kFatalSignals` as a set.
sigset_t FatalSignals();

/// While it lives, no fatal signal comes to this thread, nor ever to threads that it starts
/// meanwhile. Both ends leave `errno` as it is. To be destroyed by the thread that made it.
class BlockedSignals {
 public:
  BlockedSignals();
  ~BlockedSignals();
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t fBefore;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_BLOCKEDSIGNALS_H
