/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/job_thread.h"

#include <utility>

namespace velkor::app {

JobThread::JobThread() : thread_([this] { run(); }) {}

JobThread::~JobThread() {
  {
    const std::lock_guard guard(lock_);
    ending_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void JobThread::post(Job job) {
  {
    const std::lock_guard guard(lock_);
    jobs_.push_back(std::move(job));
  }
  changed_.notify_one();
}

void JobThread::run() {
  std::unique_lock guard(lock_);
  for (;;) {
    changed_.wait(guard, [this] { return ending_ || !jobs_.empty(); });
    if (jobs_.empty())
      return;
    {
      const Job job = std::move(jobs_.front());
      jobs_.pop_front();
      guard.unlock();
      job();
    }
    guard.lock();
  }
}

}  // namespace velkor::app
