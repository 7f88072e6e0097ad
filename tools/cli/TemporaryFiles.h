#ifndef ZLIBVIDEO_TOOLS_CLI_TEMPORARYFILES_H
#define ZLIBVIDEO_TOOLS_CLI_TEMPORARYFILES_H

#include <signal.h>

#include <string>

namespace zlibvideo {

/// Has SIGINT, SIGTERM, SIGHUP, SIGQUIT and SIGXCPU remove the registered temporary files and then
/// end the process as they would have (130, 143, 129, 131 and 152 to a shell), and turns writing to
/// a closed pipe or beyond the limit of a file's size into an error of the write. To be called
/// once, by `main`.
void InstallSignalHandlers();

/// Holds those signals back while it lives, so that creating or renaming a file and noting it down
/// are one step to the handlers.
class SignalBlock {
 public:
  SignalBlock();
  ~SignalBlock();
  SignalBlock(const SignalBlock&) = delete;
  SignalBlock& operator=(const SignalBlock&) = delete;

 private:
  sigset_t fPrevious = {};
};

/// Registers a file to be removed on a signal. REQUIRES: a `SignalBlock` lives.
void RegisterTemporary(const std::string& path);
/// Takes a file off the register. REQUIRES: a `SignalBlock` lives.
void UnregisterTemporary(const std::string& path);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_TEMPORARYFILES_H
