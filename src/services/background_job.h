/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Work on a thread of its own whose outcome is reported on the main loop. */
#ifndef VELKOR_SERVICES_BACKGROUND_JOB_H
#define VELKOR_SERVICES_BACKGROUND_JOB_H

#include <memory>

#include "http/request_record.h"
#include "http/workers.h"
#include "support/owned.h"

namespace velkor {

class BackgroundJob {
public:
  BackgroundJob() = default;
  virtual ~BackgroundJob() = default;
  BackgroundJob(const BackgroundJob &) = delete;
  BackgroundJob &operator=(const BackgroundJob &) = delete;

  /** Does the work, on the job's thread. */
  virtual void run() noexcept = 0;
  /** Reports the outcome, once, on the thread of the default main loop after run(). */
  virtual void report() noexcept = 0;

  /** The latest request of run(), as report() finds it on its own thread. */
  RequestRecord request;
  /** The thread of run(), until that has ended. */
  std::unique_ptr<Worker> worker = std::make_unique<Worker>();
};

/**
 * Starts `job` on a new detached thread; the job is freed after its report. Shut-down and the end
 * of the process make its requests fail and wait for run(), but not for the report.
 * @return the text of the error when no thread could be made (the job then never runs), else null
 */
OwnedText start_in_background(std::unique_ptr<BackgroundJob> job) noexcept;

}  // namespace velkor

#endif
