/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** All requests that have not told their end yet. */
#ifndef VELKOR_OPERATIONS_REQUEST_REGISTRY_H
#define VELKOR_OPERATIONS_REQUEST_REGISTRY_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <vector>

#include <velkor/zox_request.h>

namespace velkor {

class RequestRegistry {
public:
  /** Takes a request in, with a reference. */
  void add(ZoxRequest &request) noexcept;
  /** Notes that the thread of a request has done its work: it may be ended. */
  void note_work_done(ZoxRequest &request) noexcept;
  /** Ends a request whose work is done, unless that has begun; on the thread of its context. */
  void end(ZoxRequest &request) noexcept;

  void cancel_all() noexcept;
  [[nodiscard]] std::size_t count() noexcept;

  using Clock = std::chrono::steady_clock;
  /** Waits until no request is left, ending those whose context this thread can have. */
  bool wait_until(Clock::time_point deadline) noexcept;

  /**
   * Cancels all, waits for their threads, publishes what they brought and ends those whose context
   * this thread can have. The others end on theirs.
   */
  void stop() noexcept;

private:
  struct Entry {
    ZoxRequest *request;
    bool work_done = false;
  };
  /** Takes the request out; false when it is not there or its work is not done. */
  bool take(ZoxRequest &request) noexcept;
  [[nodiscard]] std::vector<ZoxRequest *> done_requests() noexcept;
  /** Ends what this thread can end; whether there was anything. */
  bool end_possible() noexcept;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Entry> entries_;
};

RequestRegistry &request_registry() noexcept;

}  // namespace velkor

#endif
