/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A thread that does one job after another. */
#ifndef VELKOR_APP_LIBRARY_JOB_THREAD_H
#define VELKOR_APP_LIBRARY_JOB_THREAD_H

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace velkor::app {

class JobThread {
public:
  using Job = std::function<void()>;

  JobThread();
  /** Waits for the jobs that were posted. */
  ~JobThread();
  JobThread(const JobThread &) = delete;
  JobThread &operator=(const JobThread &) = delete;

  /** Threads: any. */
  void post(Job job);

private:
  void run();

  std::mutex lock_;
  std::condition_variable changed_;
  std::deque<Job> jobs_;
  bool ending_ = false;
  std::thread thread_;  // the last member: it uses all others
};

}  // namespace velkor::app

#endif
