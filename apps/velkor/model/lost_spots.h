/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Which spots settings would take out of the list, told before that happens. */
#ifndef VELKOR_APP_MODEL_LOST_SPOTS_H
#define VELKOR_APP_MODEL_LOST_SPOTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "model/snapshot.h"

namespace velkor::app {

struct LostSpots {
  std::size_t count = 0;
  std::vector<std::string> titles{};  // of the first of them

  bool operator==(const LostSpots &) const = default;
};

/**
 * The spots whose title holds one of the words, regardless of the case of a to z. Deleted spots are
 * kept whatever their titles hold.
 */
LostSpots spots_with_words(const Snapshot &snapshot, const std::vector<std::string> &words);

/** How many spots are older than that and not on the watchlist. `now` in seconds since 1970. */
std::size_t spots_older_than(const Snapshot &snapshot, std::int32_t days, std::int64_t now);

/**
 * How many spots an update removes for being older than that if it leaves none but those that are
 * watched; 0 when it leaves others, and for a list of a few spots.
 */
std::size_t spots_of_an_emptied_list(const Snapshot &snapshot,
                                     const std::unordered_set<std::int32_t> &watched,
                                     std::int32_t days, std::int64_t now);

}  // namespace velkor::app

#endif
