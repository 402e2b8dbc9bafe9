/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The threads of the library that outlast the call which starts them. They use what shut-down
 * frees and what the end of the process takes down, so both tell them to stop and wait for them.
 */
#ifndef VELKOR_HTTP_WORKERS_H
#define VELKOR_HTTP_WORKERS_H

namespace velkor {

/** One such thread, from before it is started until this is destroyed at the end of its work. */
class Worker {
public:
  Worker() noexcept;
  ~Worker();
  Worker(const Worker &) = delete;
  Worker &operator=(const Worker &) = delete;

  /** Tells that the current thread is the one meant. */
  static void begin() noexcept;
};

/** Whether the current thread is a worker. */
bool is_worker() noexcept;

/** Whether the current thread is a worker that is to end its work; transfers then fail. */
bool worker_must_stop() noexcept;

/** Has all workers but the current thread stop and waits until they have. */
void stop_workers() noexcept;

}  // namespace velkor

#endif
