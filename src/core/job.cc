/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/job.h"

#include <utility>

namespace velkor {
namespace {

thread_local Job *job_of_thread = nullptr;

}  // namespace

JobProgress Job::progress() const noexcept {
  const std::lock_guard lock(mutex_);
  return progress_;
}

template <typename Change>
void Job::change(Change make) noexcept {
  {
    const std::lock_guard lock(mutex_);
    make(progress_);
  }
  progressed();
}

void Job::enter(JobStep step) noexcept {
  change([step](JobProgress &progress) {
    progress.step = step;
    progress.done = 0;
    progress.total = 0;
    progress.dump = 0;
  });
}

void Job::count(gint64 done, gint64 total) noexcept {
  change([done, total](JobProgress &progress) {
    progress.done = done;
    progress.total = total;
  });
}

void Job::next_dump(gint32 dump, gint32 dumps) noexcept {
  change([dump, dumps](JobProgress &progress) {
    progress.step = JobStep::download;
    progress.done = 0;
    progress.total = 0;
    progress.dump = dump;
    progress.dumps = dumps;
  });
}

void Job::spot_step(gint32 step) noexcept {
  change([step](JobProgress &progress) { progress.spot_step = step; });
}

Job *current_job() noexcept {
  return job_of_thread;
}

WorkFor::WorkFor(Job *job) noexcept : earlier_(std::exchange(job_of_thread, job)) {}

WorkFor::~WorkFor() {
  job_of_thread = earlier_;
}

}  // namespace velkor
