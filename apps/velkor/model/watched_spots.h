/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlist as a list of spots. */
#ifndef VELKOR_APP_MODEL_WATCHED_SPOTS_H
#define VELKOR_APP_MODEL_WATCHED_SPOTS_H

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "model/snapshot.h"

namespace velkor::app {

struct WatchedSpot {
  std::int32_t id = 0;
  std::optional<Row> row{};  // nothing when the list does not have the spot

  bool operator==(const WatchedSpot &) const = default;
};

/** The newest first, and behind them, by number, those that the list does not have. */
std::vector<WatchedSpot> watched_spots(const Snapshot &snapshot,
                                       const std::unordered_set<std::int32_t> &watched);

/** The number of a spot; nothing for a text that is none. */
std::optional<std::int32_t> spot_number(std::string_view text) noexcept;

}  // namespace velkor::app

#endif
