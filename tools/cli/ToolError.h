#ifndef ZLIBVIDEO_TOOLS_CLI_TOOLERROR_H
#define ZLIBVIDEO_TOOLS_CLI_TOOLERROR_H

#include <stdexcept>
#include <string>

#include "tools/cli/ExitStatus.h"

namespace zlibvideo {

/// An error that stops the tool: a file that cannot be opened, a full disk. `what()` is one line
/// that names the file; `main` prints it, unless it is empty, and ends with the status.
class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& what, ExitStatus status = kExitCouldNotRun)
      : std::runtime_error(what), fStatus(status) {}

  ExitStatus Status() const { return fStatus; }

  /// Not an error: the reader of standard output has closed it, as `head` does.
  static ToolError ReaderLeft() { return ToolError(""); }
  /// "NAME: WHAT: text of the system's error number".
  static ToolError FromSystem(const std::string& name, const std::string& what, int error);

 private:
  ExitStatus fStatus;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_TOOLERROR_H
