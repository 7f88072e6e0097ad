#ifndef ZLIBVIDEO_TOOLS_PARALLEL_PARALLEL_H
#define ZLIBVIDEO_TOOLS_PARALLEL_PARALLEL_H

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <utility>

namespace zlibvideo {

/// Starts `work` on a new thread. If the system has no thread left, `work` runs when the caller
/// asks for its result. The result returns or throws as `work` does. Its destructor waits for the
/// end.
template <typename Result>
std::future<Result> InBackground(const std::function<Result()>& work) {
  // async copies `work`. libstdc++ would move an rvalue into the thread that it fails to start, and
  // then defer an empty function.
  return std::async(std::launch::async | std::launch::deferred, work);
}

/// Calls `body(item)` once for each item from 0 to `count` - 1, on up to `jobs` threads, the
/// caller's included, and returns after the last call. Items start in order. If a call throws, the
/// exception is thrown here after all threads have ended.
void ForEach(std::size_t count, unsigned int jobs,
             const std::function<void(std::size_t item)>& body);

/// Runs work on other threads and returns the results in the order in which the work began. For use
/// by one thread. The destructor waits for all work.
template <typename Result>
class OrderedWork {
 public:
  /// With a single job, `Take` runs the work on the caller's thread. With more, each piece of work
  /// has a thread: `jobs` threads, at most 8, and two that run while the caller waits for the
  /// oldest.
  explicit OrderedWork(unsigned int jobs)
      : fCapacity(jobs == 1 ? 1 : std::min(jobs, kMaxJobs) + kMoreThreads) {}

  bool IsEmpty() const { return fBegun.empty(); }
  bool IsFull() const { return fBegun.size() >= fCapacity; }

  /// REQUIRES: not full.
  void Begin(const std::function<Result()>& work) {
    fBegun.push_back(fCapacity > 1 ? InBackground(work) : std::async(std::launch::deferred, work));
  }

  /// Waits for the oldest work and returns its result, or throws its exception. REQUIRES: not
  /// empty.
  Result Take() {
    std::future<Result> oldest = std::move(fBegun.front());
    fBegun.pop_front();
    return oldest.get();
  }

 private:
  /// 8 threads read or encode pictures faster than a single thread decodes or records them.
  static constexpr unsigned int kMaxJobs = 8;
  static constexpr unsigned int kMoreThreads = 2;

  std::size_t fCapacity;
  std::deque<std::future<Result>> fBegun;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PARALLEL_PARALLEL_H
