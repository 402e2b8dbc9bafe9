/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How far an update is, and how it ended. */
#ifndef VELKOR_APP_MODEL_UPDATE_STATE_H
#define VELKOR_APP_MODEL_UPDATE_STATE_H

#include <cstdint>
#include <string>
#include <vector>

#include "model/watcher_hits.h"

namespace velkor::app {

struct UpdateProgress {
  int dump = 0;               // number of the dump that is downloaded, from 1; 0 before the first
  int dumps = 0;              // 0 while unknown
  std::int64_t received = 0;  // bytes of that dump
  std::int64_t expected = 0;  // 0 while unknown
  bool saving = false;        // all has arrived and is being merged and saved

  /** From 0 to 1, over all dumps; nothing is known about how they differ in size. */
  [[nodiscard]] double fraction() const noexcept;
};

struct UpdateOutcome {
  enum class Kind { changed, nothing_new, failed, stopped };

  Kind kind = Kind::failed;
  std::string message{};                 // the library's sentence; empty for changed and stopped
  std::uint32_t fresh = 0;               // postings that the list did not have
  std::uint32_t changed = 0;             // postings that it had
  std::uint32_t deleted = 0;             // postings that came as deleted
  std::vector<WatcherGroup> watchers{};  // what they matched of the fresh and changed ones
  std::uint32_t aged_out = 0;            // postings that were too old and are gone
  std::int32_t age_limit = 0;            // the age in days that decided so; 0 while unknown
  bool watchlist_changed = false;
  std::string not_saved{};  // why the postings could not be saved; empty when they could

  [[nodiscard]] std::uint32_t received() const noexcept { return fresh + changed + deleted; }
};

}  // namespace velkor::app

#endif
