#ifndef ZLIBVIDEO_TOOLS_PARALLEL_ORDEREDWORK_H
#define ZLIBVIDEO_TOOLS_PARALLEL_ORDEREDWORK_H

#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <utility>

#include "tools/parallel/InBackground.h"

namespace zlibvideo {

/// Pictures that are held at most while several are read or encoded at once. More pictures than one
/// thread can keep up with would only cost memory.
inline constexpr unsigned int kMaxPicturesAtOnce = 8;

/// Work that is done on other threads, with results taken in the order in which it was begun. Used
/// by one thread. Destroying it waits for what was begun.
template <typename Result>
class OrderedWork {
 public:
  /// For up to `capacity` pieces of work at once, at least one, each on a thread of its own. With a
  /// capacity of 1, work is done by the thread that takes its result.
  explicit OrderedWork(unsigned int capacity) : fCapacity(capacity) {}

  bool IsEmpty() const { return fBegun.empty(); }
  bool IsFull() const { return fBegun.size() >= fCapacity; }

  /// REQUIRES: not full.
  void Begin(std::function<Result()> work) {
    fBegun.push_back(fCapacity > 1 ? InBackground(work)
                                   : std::async(std::launch::deferred, std::move(work)));
  }

  /// The result of the oldest work, once it is done; throws what that threw. REQUIRES: not empty.
  Result Take() {
    std::future<Result> oldest = std::move(fBegun.front());
    fBegun.pop_front();
    return oldest.get();
  }

 private:
  std::size_t fCapacity;
  std::deque<std::future<Result>> fBegun;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PARALLEL_ORDEREDWORK_H
