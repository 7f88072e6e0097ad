#ifndef ZLIBVIDEO_TOOLS_PARALLEL_INBACKGROUND_H
#define ZLIBVIDEO_TOOLS_PARALLEL_INBACKGROUND_H

#include <future>
#include <type_traits>
#include <utility>

#include "tools/cli/BlockedSignals.h"

namespace zlibvideo {

/// Begins `work` on a thread of its own; if the system has none left, it is done when the result is
/// asked for. The result gives what `work` returns or throws; destroying it waits for the end.
/// Signals that end the program come to the thread that `main` runs in, never to this one.
template <typename Work>
std::future<std::invoke_result_t<Work>> InBackground(Work work) {
  const BlockedSignals inherited;
  return std::async(std::launch::async | std::launch::deferred, std::move(work));
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PARALLEL_INBACKGROUND_H
