/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/job_thread.h"

#include <utility>

#include "library/main_loop.h"

namespace velkor::app {

JobThread::JobThread()
    : context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE)),
      thread_([this] { run(); }) {}

JobThread::~JobThread() {
  post([this] { g_main_loop_quit(loop_.get()); });
  thread_.join();
}

void JobThread::post(Job job) {
  run_on_context(context_.get(), std::move(job));
}

void JobThread::run() {
  g_main_context_push_thread_default(context_.get());
  g_main_loop_run(loop_.get());
  g_main_context_pop_thread_default(context_.get());
}

}  // namespace velkor::app
