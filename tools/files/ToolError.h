#ifndef ZLIBVIDEO_TOOLS_FILES_TOOLERROR_H
#define ZLIBVIDEO_TOOLS_FILES_TOOLERROR_H

#include <stdexcept>
#include <string>
#include <system_error>

namespace zlibvideo {

/// Exit statuses of all commands.
enum ExitStatus : int {
  kExitSuccess = 0,
  /// Wrong arguments, or a file that cannot be read or written or has no whole message.
  kExitCouldNotRun = 1,
  /// Some messages failed, or the input is cut off, or was left before its end: what came before is
  /// there.
  kExitDamagedInput = 2,
  /// `decode --verify` found a message that differs from the list.
  kExitMismatch = 3,
};

/// An error that stops the tool: a file that cannot be opened, a full disk. `what()` is one line
/// that names the file; `main` prints it, unless it is empty, and ends with the status.
class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& what, ExitStatus status = kExitCouldNotRun)
      : std::runtime_error(what), fStatus(status) {}

  ExitStatus Status() const { return fStatus; }

  /// Not an error: the reader of standard output has closed it, as `head` does.
  static ToolError ReaderLeft() { return ToolError(""); }
  bool IsReaderLeft() const { return *what() == '\0'; }
  /// "NAME: WHAT: text of the system's error number".
  static ToolError FromSystem(const std::string& name, const std::string& what, int error) {
    return ToolError(name + ": " + what + ": " + std::generic_category().message(error));
  }

 private:
  ExitStatus fStatus;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_TOOLERROR_H
