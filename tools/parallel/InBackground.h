#ifndef ZLIBVIDEO_TOOLS_PARALLEL_INBACKGROUND_H
#define ZLIBVIDEO_TOOLS_PARALLEL_INBACKGROUND_H

#include <future>
#include <type_traits>

namespace zlibvideo {

/// Begins `work` on a thread of its own; if the system has none left, it is done when the result is
/// asked for. The result gives what `work` returns or throws; destroying it waits for the end.
template <typename Work>
std::future<std::invoke_result_t<Work>> InBackground(const Work& work) {
  // A copy: without a thread, libstdc++ would defer what it has moved from already.
  return std::async(std::launch::async | std::launch::deferred, work);
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PARALLEL_INBACKGROUND_H
