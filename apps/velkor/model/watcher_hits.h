/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the watchers matched in an update. */
#ifndef VELKOR_APP_MODEL_WATCHER_HITS_H
#define VELKOR_APP_MODEL_WATCHER_HITS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "model/snapshot.h"

namespace velkor::app {

/** A spot and the watcher that matched it, the first one if there are several. */
struct WatcherHit {
  std::int32_t id = 0;
  std::string watcher{};
};

struct HitSpot {
  std::int32_t id = 0;
  std::string title{};

  bool operator==(const HitSpot &) const = default;
};

/** What one watcher matched. */
struct WatcherGroup {
  std::string watcher;
  std::size_t count = 0;
  std::vector<HitSpot> spots{};  // the newest of them, the newest first

  bool operator==(const WatcherGroup &) const = default;
};

/** The hits by watcher, in the order of their texts; those that are not listed are left out. */
std::vector<WatcherGroup> group_by_watcher(const Snapshot &snapshot,
                                           std::span<const WatcherHit> hits);

}  // namespace velkor::app

#endif
