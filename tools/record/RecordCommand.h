#ifndef ZLIBVIDEO_TOOLS_RECORD_RECORDCOMMAND_H
#define ZLIBVIDEO_TOOLS_RECORD_RECORDCOMMAND_H

namespace CLI {
class App;
}

namespace zlibvideo {

/// Adds `record` to the commands of `app`. When the arguments name it, parsing runs it and stores
/// its exit status. `exitStatus` must outlive `app`.
void AddRecordCommand(CLI::App& app, int* exitStatus);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RECORDCOMMAND_H
