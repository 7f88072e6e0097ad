#include <fcntl.h>
#include <unistd.h>

#include <exception>
#include <new>

#include "tools/CommandLine.h"
#include "tools/cli/ExitStatus.h"
#include "tools/cli/PrintLine.h"
#include "tools/cli/TemporaryFiles.h"
#include "tools/cli/ToolError.h"

namespace {

/// A file that is opened takes the lowest free descriptor. Were one of the standard three free,
/// lines for people would end up in an output. What stands in for input and output cannot be read
/// or written, so that using it still is an error; for output it is nothing that an output can be.
void FillStandardDescriptors() {
  struct StandIn {
    const char* path;
    int mode;
  };
  constexpr StandIn kStandIns[] = {
      {"/dev/null", O_WRONLY}, {"/", O_RDONLY | O_DIRECTORY}, {"/dev/null", O_WRONLY}};
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    static_cast<void>(open(kStandIns[descriptor].path, kStandIns[descriptor].mode));
  }
}

}  // namespace

int main(int argc, char** argv) {
  FillStandardDescriptors();
  zlibvideo::InstallSignalHandlers();
  try {
    return zlibvideo::RunCommandLine(argc, argv);
  } catch (const zlibvideo::ToolError& error) {
    if (*error.what() != '\0') zlibvideo::PrintLine(error.what());
    return error.Status();
  } catch (const std::bad_alloc&) {
    zlibvideo::PrintLine("not enough memory");
  } catch (const std::exception& error) {
    zlibvideo::PrintLine(error.what());
  } catch (...) {
    zlibvideo::PrintLine("ended by an unknown error");
  }
  return zlibvideo::kExitCouldNotRun;
}
