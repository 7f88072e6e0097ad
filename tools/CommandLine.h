#ifndef ZLIBVIDEO_TOOLS_COMMANDLINE_H
#define ZLIBVIDEO_TOOLS_COMMANDLINE_H

namespace zlibvideo {

/// Parses the arguments of `zlibvideo`, runs the command that they name and returns its exit
/// status. Usage errors are printed. Throws what the command throws.
int RunCommandLine(int argc, const char* const* argv);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_COMMANDLINE_H
