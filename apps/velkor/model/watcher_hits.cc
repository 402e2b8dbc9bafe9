/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/watcher_hits.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

namespace velkor::app {
namespace {

constexpr std::size_t spots_told = 3;

WatcherGroup group_of(const Snapshot &snapshot, const std::string &watcher,
                      std::vector<Row> &rows) {
  const PostingTable &table = snapshot.table;
  std::ranges::sort(rows, std::greater(),
                    [&table](Row row) { return std::pair(table.stamp(row), table.id(row)); });
  WatcherGroup group{.watcher = watcher, .count = rows.size()};
  for (const Row row : std::span(rows).first(std::min(spots_told, rows.size())))
    group.spots.push_back({table.id(row), std::string(table.title(row))});
  return group;
}

}  // namespace

std::vector<WatcherGroup> group_by_watcher(const Snapshot &snapshot,
                                           std::span<const WatcherHit> hits) {
  std::map<std::string, std::vector<Row>> rows;
  for (const WatcherHit &hit : hits)
    if (const auto row = snapshot.table.find(hit.id))
      rows[hit.watcher].push_back(*row);
  std::vector<WatcherGroup> groups;
  for (auto &[watcher, matched] : rows)
    groups.push_back(group_of(snapshot, watcher, matched));
  return groups;
}

}  // namespace velkor::app
