#include <exception>
#include <new>

#include "tools/CommandLine.h"
#include "tools/common/ExitStatus.h"
#include "tools/common/PrintLine.h"
#include "tools/common/TemporaryFiles.h"
#include "tools/common/ToolError.h"

int main(int argc, char** argv) {
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
