#include "tools/stream/FailureRun.h"

#include <utility>

#include "tools/terminal/Wording.h"

namespace zlibvideo {

bool FailureRun::HoldsBack(const FileMessage& message, bool decoded) {
  if (decoded) {
    fReported = 0;
    return false;
  }
  if (message.length != 0 && fReported < kMaxReported) {
    ++fReported;
    return false;
  }
  if (fHeldBack++ == 0) {
    fFirst = message;
    fAllEmpty = true;
    ++fReported;
  }
  fAllEmpty = fAllEmpty && message.length == 0;
  return true;
}

std::string FailureRun::TakeHeldBack() {
  const std::uint64_t count = std::exchange(fHeldBack, 0);
  if (count == 0) return {};
  if (!fAllEmpty) return Counted(count, "more message") + " failed";
  const std::string first = std::to_string(fFirst.Number());
  if (count == 1) {
    return "message " + first + " at byte " + std::to_string(fFirst.offset) + ": it is empty";
  }
  return "messages " + first + " to " + std::to_string(fFirst.index + count) + ", from byte " +
         std::to_string(fFirst.offset - kMessageLengthBytes) + " on, are empty";
}

}  // namespace zlibvideo
