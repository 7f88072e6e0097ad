#include "tools/decode/DecodeCommand.h"

#include <CLI/CLI.hpp>

namespace zlibvideo {

void AddDecodeCommand(CLI::App& app, int* exitStatus) {
  CLI::App* command = app.add_subcommand("decode", "Decode a message file");
  command->callback([exitStatus] { *exitStatus = 0; });
}

}  // namespace zlibvideo
