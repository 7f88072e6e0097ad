#ifndef ZLIBVIDEO_TOOLS_PARALLEL_FOREACH_H
#define ZLIBVIDEO_TOOLS_PARALLEL_FOREACH_H

#include <cstddef>
#include <functional>

namespace zlibvideo {

/// Calls `body(item, worker)` once for each item from 0 to `count` - 1, on up to `jobs` threads of
/// which this is one, and returns when all is done. Items are begun in order; `worker`, below
/// `jobs`, is the thread's own. What a call throws is thrown when no other is running any more.
void ForEach(std::size_t count, unsigned int jobs,
             const std::function<void(std::size_t item, unsigned int worker)>& body);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PARALLEL_FOREACH_H
