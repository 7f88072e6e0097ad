#include "tools/cli/ToolError.h"

#include <system_error>

namespace zlibvideo {

ToolError ToolError::FromSystem(const std::string& name, const std::string& what, int error) {
  return ToolError(name + ": " + what + ": " + std::generic_category().message(error));
}

}  // namespace zlibvideo
