#ifndef ZLIBVIDEO_TOOLS_FILES_TOOLERROR_H
#define ZLIBVIDEO_TOOLS_FILES_TOOLERROR_H

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace zlibvideo {

/// Exit statuses of all commands.
enum ExitStatus : int {
  kExitSuccess = 0,
  /// Wrong arguments, or a file that cannot be read or written or has no whole message.
  kExitCouldNotRun = 1,
  /// Some messages failed, or the input was not read to its end. The output has all before that.
  kExitDamagedInput = 2,
  /// `decode --verify` found a message that differs from the list.
  kExitMismatch = 3,
};

/// An error that stops the tool: a file that cannot be opened, a full disk. `what()` is a line
/// that names the file. `main` prints it and ends with the status.
class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& what, ExitStatus status = kExitCouldNotRun)
      : std::runtime_error(what), fStatus(status) {}

  ExitStatus Status() const { return fStatus; }

 private:
  ExitStatus fStatus;
};

/// The reader of a pipe has closed it, as `head` does. `main` ends without a line.
struct ReaderLeft {};

/// A signal stopped the run. `main` ends as the signal would have ended the process.
struct StoppedBySignal {};

/// Throws `ToolError` with "NAME: PROBLEM: text of the system's error number", or `StoppedBySignal`
/// if a signal interrupted the system.
[[noreturn]] inline void ThrowSystemError(const std::string& name, const std::string& problem,
                                          int error) {
  if (error == EINTR) throw StoppedBySignal();
  throw ToolError(name + ": " + problem + ": " + std::generic_category().message(error));
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_TOOLERROR_H
