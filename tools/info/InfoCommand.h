#ifndef ZLIBVIDEO_TOOLS_INFO_INFOCOMMAND_H
#define ZLIBVIDEO_TOOLS_INFO_INFOCOMMAND_H

namespace CLI {
class App;
}

namespace zlibvideo {

/// Adds `info` to the commands of `app`. When the arguments name it, parsing runs it and stores
/// its exit status. `exitStatus` must outlive `app`.
void AddInfoCommand(CLI::App& app, int* exitStatus);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_INFOCOMMAND_H
