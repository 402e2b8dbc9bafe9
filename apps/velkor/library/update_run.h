/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One update of the cache. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_UPDATE_RUN_H
#define VELKOR_APP_LIBRARY_UPDATE_RUN_H

#include <cstdint>
#include <functional>
#include <unordered_set>

#include <velkor/zox_types.h>

#include "library/transfers.h"
#include "model/update_state.h"

namespace velkor::app {

class UpdateRun {
public:
  using Follow = std::function<void(UpdateProgress)>;

  /** @param follow  called on the thread of the update */
  UpdateRun(const Cancellation &cancellation, Follow follow);
  ~UpdateRun();
  UpdateRun(const UpdateRun &) = delete;
  UpdateRun &operator=(const UpdateRun &) = delete;

  UpdateOutcome run();

  /** The ids of the postings that a watcher matched; valid after a run that changed the list. */
  [[nodiscard]] const std::unordered_set<std::int32_t> &hits() const noexcept { return hits_; }

private:
  static gint on_dump(gint32 total, gint32 index) noexcept;
  static gint on_merge(guint32 total, guint32 done, gpointer self) noexcept;
  static gint on_done(gpointer self) noexcept;

  [[nodiscard]] UpdateOutcome outcome_of(ZoxErrorCode code, const char *server_text) const;

  static UpdateRun *current_;  // the library hands nothing to its progress function

  const Cancellation &cancellation_;
  Follow follow_;
  WatchedTransfers transfers_;
  std::uint32_t count_before_;
  UpdateProgress progress_;
  UpdateOutcome outcome_;
  bool merged_ = false;
  std::unordered_set<std::int32_t> hits_;
};

}  // namespace velkor::app

#endif
