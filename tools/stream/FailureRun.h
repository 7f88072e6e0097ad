#ifndef ZLIBVIDEO_TOOLS_STREAM_FAILURERUN_H
#define ZLIBVIDEO_TOOLS_STREAM_FAILURERUN_H

#include <cstdint>
#include <string>

#include "tools/stream/MessageFile.h"

namespace zlibvideo {

/// Keeps reports about damaged files short: holds back messages that fail after 20 failures in a
/// row, and empty messages, which zeros in a file are. For each message:
///
///   if (run.HoldsBack(message, decoded)) return;
///   Tell(run.TakeHeldBack());
///   Report(message);
class FailureRun {
 public:
  /// Counts the message. True if it is held back.
  bool HoldsBack(const FileMessage& message, bool decoded);
  /// A sentence about the messages held back since the last call, or nothing. Also to be called
  /// after the last message.
  std::string TakeHeldBack();

 private:
  static constexpr int kMaxReported = 20;

  /// Since the last decoded message, with each sentence of `TakeHeldBack` as another report.
  int fReported = 0;
  std::uint64_t fHeldBack = 0;
  /// Of the messages held back: the first, and whether all of them are empty.
  FileMessage fFirst;
  bool fAllEmpty = true;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_FAILURERUN_H
