#include "tools/parallel/Parallel.h"

#include <atomic>
#include <vector>

namespace zlibvideo {

void ForEach(std::size_t count, unsigned int jobs,
             const std::function<void(std::size_t, unsigned int)>& body) {
  std::atomic<std::size_t> next = 0;
  const auto work = [&](unsigned int worker) {
    for (std::size_t item = next++; item < count; item = next++) body(item, worker);
  };
  const auto workers = static_cast<unsigned int>(std::min<std::size_t>(count, jobs));
  std::vector<std::future<void>> others;
  for (unsigned int worker = 1; worker < workers; ++worker) {
    others.push_back(InBackground<void>([&work, worker] { work(worker); }));
  }
  work(0);
  for (std::future<void>& other : others) other.get();
}

}  // namespace zlibvideo
