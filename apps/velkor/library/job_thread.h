/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A thread that does one job after another and runs a main context of its own between them. */
#ifndef VELKOR_APP_LIBRARY_JOB_THREAD_H
#define VELKOR_APP_LIBRARY_JOB_THREAD_H

#include <functional>
#include <memory>
#include <thread>

#include <glib.h>

#include "support/owned.h"

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

  /** The context whose sources the thread dispatches. */
  [[nodiscard]] GMainContext *context() const noexcept { return context_.get(); }

private:
  void run();

  using OwnedContext = std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>>;
  using OwnedLoop = std::unique_ptr<GMainLoop, ReleaseWith<g_main_loop_unref>>;

  OwnedContext context_;
  OwnedLoop loop_;
  std::thread thread_;  // the last member: it uses all others
};

}  // namespace velkor::app

#endif
