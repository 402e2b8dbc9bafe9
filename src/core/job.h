/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Work of one thread that others follow and may cancel. */
#ifndef VELKOR_CORE_JOB_H
#define VELKOR_CORE_JOB_H

#include <atomic>
#include <mutex>

#include <glib.h>

namespace velkor {

enum class JobStep { waiting, asking, download, merging, saving };

struct JobProgress {
  JobStep step = JobStep::waiting;
  /** Bytes of the reply; postings while merging. `total` is 0 while unknown. */
  gint64 done = 0;
  gint64 total = 0;
  gint32 dump = 0;
  gint32 dumps = 0;
  gint32 spot_step = 0;
};

class Job {
public:
  Job() = default;
  virtual ~Job() = default;
  Job(const Job &) = delete;
  Job &operator=(const Job &) = delete;

  void cancel() noexcept { cancelled_ = true; }
  [[nodiscard]] bool cancelled() const noexcept { return cancelled_; }

  [[nodiscard]] JobProgress progress() const noexcept;

  /* For the thread that does the work. */
  void enter(JobStep step) noexcept;
  void count(gint64 done, gint64 total) noexcept;
  void next_dump(gint32 dump, gint32 dumps) noexcept;
  void spot_step(gint32 step) noexcept;

private:
  /** Called after every change of the progress, on the thread that does the work. */
  virtual void progressed() noexcept {}
  template <typename Change>
  void change(Change make) noexcept;

  std::atomic<bool> cancelled_ = false;
  mutable std::mutex mutex_;
  JobProgress progress_;
};

/** The job that this thread works for; null when it works for its own program. */
Job *current_job() noexcept;

/** Whether this thread works for a job that was cancelled. */
inline bool is_cancelled() noexcept {
  const Job *job = current_job();
  return job != nullptr && job->cancelled();
}

/** Tells the job of this thread, if there is one, what it is at. */
inline void enter_step(JobStep step) noexcept {
  if (Job *job = current_job())
    job->enter(step);
}

/** This thread works for the job, for null for none, while this lives. */
class WorkFor {
public:
  explicit WorkFor(Job *job) noexcept;
  ~WorkFor();
  WorkFor(const WorkFor &) = delete;
  WorkFor &operator=(const WorkFor &) = delete;

private:
  Job *const earlier_;
};

}  // namespace velkor

#endif
