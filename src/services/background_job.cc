/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "services/background_job.h"

#include "support/thread_order.h"

namespace velkor {
namespace {

gboolean report_job(gpointer data) noexcept {
  order_after(data);
  const std::unique_ptr<BackgroundJob> job(static_cast<BackgroundJob *>(data));
  latest_request() = std::move(job->request);
  job->report();
  return G_SOURCE_REMOVE;
}

gpointer run_job(gpointer data) noexcept {
  auto *job = static_cast<BackgroundJob *>(data);
  const std::unique_ptr<Worker> worker = std::move(job->worker);  // the job may go before it
  Worker::begin();
  job->run();
  job->request = std::move(latest_request());
  order_before(data);
  g_idle_add(report_job, data);
  return nullptr;
}

}  // namespace

OwnedText start_in_background(std::unique_ptr<BackgroundJob> job) noexcept {
  GError *error = nullptr;
  GThread *thread = g_thread_try_new("velkor-job", run_job, job.get(), &error);
  if (thread == nullptr) {
    const OwnedError owner(error);
    return OwnedText(std::exchange(error->message, nullptr));
  }
  // From here on the thread, which is detached, owns the job.
  static_cast<void>(job.release());
  g_thread_unref(thread);
  return nullptr;
}

}  // namespace velkor
