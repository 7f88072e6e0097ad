#include "tools/cli/FileNameValidator.h"

#include <CLI/CLI.hpp>
#include <string>

namespace zlibvideo {

CLI::Validator FileNameValidator() {
  return CLI::Validator(
      [](const std::string& name) {
        return name.empty() ? std::string("the name is empty") : std::string();
      },
      "", "file name");
}

}  // namespace zlibvideo
