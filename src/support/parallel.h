/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Work of one call that several threads share; all of them have ended when the call returns. */
#ifndef VELKOR_SUPPORT_PARALLEL_H
#define VELKOR_SUPPORT_PARALLEL_H

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

namespace velkor {

/** Hands out the numbers from 0 to below `count`, each once, to any thread that asks. */
class Tickets {
public:
  explicit Tickets(std::size_t count) noexcept : count_(count) {}

  /** The next number; nothing when all are taken. */
  std::optional<std::size_t> next() noexcept {
    const std::size_t number = next_.fetch_add(1, std::memory_order_relaxed);
    return number < count_ ? std::optional(number) : std::nullopt;
  }
  /** Hands out no more numbers. */
  void stop() noexcept { next_.store(count_, std::memory_order_relaxed); }

private:
  const std::size_t count_;
  std::atomic<std::size_t> next_{0};
};

/** How many threads are worth starting for so many pieces of work, the caller's included. */
inline std::size_t threads_for(std::size_t pieces) noexcept {
  constexpr std::size_t max_threads = 8;  // beyond that the disk and the memory set the pace
  const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
  return std::clamp<std::size_t>(pieces, 1, std::min(processors, max_threads));
}

/**
 * Calls `work()` on this thread and on `threads` - 1 others at the same time and waits for all. It
 * is called on fewer threads when the system has no more.
 * @param work  copes with any number of calls; throws nothing
 */
template <typename Work>
void run_on_threads(std::size_t threads, const Work &work) noexcept {
  std::vector<std::jthread> others;
  others.reserve(threads - 1);
  try {
    while (others.size() + 1 < threads)
      others.emplace_back([&work] { work(); });
  } catch (const std::system_error &) {  // those that run do all of it
  }
  work();
}

/**
 * Does all pieces of work from 0 to below `count`, shared out among threads, until one fails.
 * @param make_worker  called once by each thread; what it returns is called with the number of each
 *                     piece that the thread does, and tells whether the piece went well
 * @return whether all went well
 */
template <typename MakeWorker>
bool share_out(std::size_t count, const MakeWorker &make_worker) noexcept {
  Tickets tickets(count);
  std::atomic<bool> good = true;
  run_on_threads(threads_for(count), [&] {
    auto worker = make_worker();
    while (const auto number = tickets.next()) {
      if (!worker(*number)) {
        good = false;
        tickets.stop();
      }
    }
  });
  return good;
}

}  // namespace velkor

#endif
