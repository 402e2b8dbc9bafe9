/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/watched_spots.h"

#include <algorithm>
#include <limits>
#include <tuple>

#include "support/numbers.h"

namespace velkor::app {

std::vector<WatchedSpot> watched_spots(const Snapshot &snapshot,
                                       const std::unordered_set<std::int32_t> &watched) {
  const PostingTable &table = snapshot.table;
  std::vector<WatchedSpot> spots;
  for (const std::int32_t id : watched)
    spots.push_back({id, table.find(id)});
  std::ranges::sort(spots, {}, [&](const WatchedSpot &spot) {
    return std::tuple(!spot.row, spot.row ? -table.stamp(*spot.row) : 0, spot.id);
  });
  return spots;
}

std::optional<std::int32_t> spot_number(std::string_view text) noexcept {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  text.remove_prefix(first);
  text = text.substr(0, text.find_last_not_of(' ') + 1);
  const auto number = whole_number(text);
  if (!number || *number < 1 || *number > std::numeric_limits<std::int32_t>::max())
    return std::nullopt;
  return static_cast<std::int32_t>(*number);
}

}  // namespace velkor::app
