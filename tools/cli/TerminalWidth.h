#ifndef ZLIBVIDEO_TOOLS_CLI_TERMINALWIDTH_H
#define ZLIBVIDEO_TOOLS_CLI_TERMINALWIDTH_H

#include <cstddef>

namespace zlibvideo {

/// Characters in a line of the terminal that `descriptor` is: COLUMNS of the environment if set,
/// else what the terminal says.
std::size_t TerminalWidth(int descriptor);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_TERMINALWIDTH_H
