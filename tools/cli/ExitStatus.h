#ifndef ZLIBVIDEO_TOOLS_CLI_EXITSTATUS_H
#define ZLIBVIDEO_TOOLS_CLI_EXITSTATUS_H

namespace zlibvideo {

/// Exit statuses of all commands.
enum ExitStatus : int {
  kExitSuccess = 0,
  /// Wrong arguments, or a file that cannot be read or written or has no whole message.
  kExitCouldNotRun = 1,
  /// Some messages failed, or the message file is cut off; all others were decoded.
  kExitDamagedInput = 2,
  /// `decode --verify` found a message that differs from the list.
  kExitMismatch = 3,
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_EXITSTATUS_H
