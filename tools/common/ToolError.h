#ifndef ZLIBVIDEO_TOOLS_COMMON_TOOLERROR_H
#define ZLIBVIDEO_TOOLS_COMMON_TOOLERROR_H

#include <stdexcept>
#include <string>

namespace zlibvideo {

/// What keeps the tool from going on: a file that cannot be opened, a full disk. `what()` is one
/// line that names the file; `main` prints it and ends with `kExitCouldNotRun`.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  /// "NAME: WHAT: text of the system's error number".
  static ToolError FromSystem(const std::string& name, const std::string& what, int error);
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_COMMON_TOOLERROR_H
