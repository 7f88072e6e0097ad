#ifndef ZLIBVIDEO_TOOLS_COMMANDS_H
#define ZLIBVIDEO_TOOLS_COMMANDS_H

namespace CLI {
class App;
}

namespace zlibvideo {

// Each function adds a command to `app`. If the arguments name the command, parsing runs it and
// stores its exit status. `exitStatus` must outlive `app`.
void AddDecodeCommand(CLI::App& app, int* exitStatus);
void AddInfoCommand(CLI::App& app, int* exitStatus);
void AddRecordCommand(CLI::App& app, int* exitStatus);

/// Parses the arguments, runs the command that they name and returns its exit status. Usage errors
/// are printed. Throws what the command throws.
int RunCommandLine(int argc, const char* const* argv);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_COMMANDS_H
