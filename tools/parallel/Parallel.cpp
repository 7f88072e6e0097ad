#include "tools/parallel/Parallel.h"

#include <atomic>
#include <vector>

namespace zlibvideo {

void ForEach(std::size_t count, unsigned int jobs,
             const std::function<void(std::size_t item)>& body) {
  std::atomic<std::size_t> next = 0;
  const std::function<void()> work = [&] {
    for (std::size_t item = next++; item < count; item = next++) body(item);
  };
  const std::size_t threads = std::min<std::size_t>(count, jobs);
  std::vector<std::future<void>> others;
  while (others.size() + 1 < threads) others.push_back(InBackground(work));
  work();
  for (std::future<void>& other : others) other.get();
}

}  // namespace zlibvideo
