#ifndef ZLIBVIDEO_TOOLS_INFO_CHANGEBAR_H
#define ZLIBVIDEO_TOOLS_INFO_CHANGEBAR_H

#include <string>

#include "tools/cli/Terminal.h"
#include "tools/info/MessageReport.h"

namespace zlibvideo {

/// Characters that a change bar takes where there is room.
inline constexpr int kChangeBarWidth = 16;

/// Where a message changed the picture, from its left edge to its right: each character stands for
/// one or more columns of blocks, and the more of their blocks changed, the fuller it is. At most
/// `mostWidth` characters, which must be positive.
std::string ChangeBar(const MessageReport& report, int mostWidth, const Terminal& terminal);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_CHANGEBAR_H
