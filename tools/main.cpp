#include <fcntl.h>
#include <unistd.h>

#include <exception>
#include <new>

#include "tools/Commands.h"
#include "tools/files/OutputFile.h"
#include "tools/files/StopSignal.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/StandardError.h"

namespace zlibvideo {
namespace {

/// Opens standard streams that are closed. Otherwise the next files that are opened have their
/// descriptors, and lines for people end up in an output. Reading finds no bytes, writing fails.
void OpenStandardStreams() {
  int descriptor = STDIN_FILENO;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDONLY);
  close(descriptor);
}

}  // namespace
}  // namespace zlibvideo

int main(int argc, char** argv) {
  zlibvideo::OpenStandardStreams();
  zlibvideo::InstallSignalHandlers();
  try {
    return zlibvideo::RunCommandLine(argc, argv);
  } catch (const zlibvideo::ToolError& error) {
    zlibvideo::PrintLine(error.what());
    return error.Status();
  } catch (const zlibvideo::ReaderLeft&) {
  } catch (const zlibvideo::StoppedBySignal&) {
    zlibvideo::PrintLine("stopped by a signal");
    zlibvideo::EndByStopSignal();
  } catch (const std::bad_alloc&) {
    zlibvideo::PrintLine("not enough memory");
  } catch (const std::exception& error) {
    zlibvideo::PrintLine(error.what());
  }
  return zlibvideo::kExitCouldNotRun;
}
