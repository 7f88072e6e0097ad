#ifndef ZLIBVIDEO_TOOLS_DECODE_DECODECOMMAND_H
#define ZLIBVIDEO_TOOLS_DECODE_DECODECOMMAND_H

namespace CLI {
class App;
}

namespace zlibvideo {

/// Adds `decode` to the commands of `app`. When the arguments name it, parsing runs it and stores
/// its exit status. `exitStatus` must outlive `app`.
void AddDecodeCommand(CLI::App& app, int* exitStatus);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_DECODECOMMAND_H
