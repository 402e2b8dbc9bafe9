/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/spot_query.h"

#include <algorithm>

#include "support/text.h"

namespace velkor::app {
namespace {

/** In the order of the table, in which the titles lie in memory. */
std::vector<bool> matching_rows(const Snapshot &snapshot, const SpotQuery &query) {
  const PostingTable &table = snapshot.table;
  std::vector<bool> matching(table.size());
  if (query.entry >= snapshot.tree.size())
    return matching;
  const Bitmap &of_entry = snapshot.tree[query.entry].rows;
  for (Row row = 0; row < table.size(); ++row)
    matching[row] = of_entry.contains(row) &&
                    (query.marks == 0 || table.has(row, static_cast<Mark>(query.marks))) &&
                    contains_ignoring_case(table.title(row), query.text);
  return matching;
}

}  // namespace

std::vector<Row> select_rows(const Snapshot &snapshot, Orders &orders, const SpotQuery &query) {
  const std::vector<bool> matching = matching_rows(snapshot, query);
  std::vector<Row> rows;
  rows.reserve(static_cast<std::size_t>(std::ranges::count(matching, true)));
  for (const Row row : orders.by(query.sorting.column))
    if (matching[row])
      rows.push_back(row);
  if (query.sorting.descending)
    std::ranges::reverse(rows);
  return rows;
}

std::optional<std::size_t> place_of(const Snapshot &snapshot, const std::vector<Row> &rows,
                                    std::int32_t id) noexcept {
  const std::optional<Row> row = snapshot.table.find(id);
  if (!row)
    return std::nullopt;
  const auto place = std::ranges::find(rows, *row);
  return place == rows.end() ? std::nullopt
                             : std::optional(static_cast<std::size_t>(place - rows.begin()));
}

std::size_t matching_entry(const std::vector<TreeEntry> &tree, const TreeEntry &earlier) noexcept {
  const auto place = std::ranges::find_if(tree, [&](const TreeEntry &entry) {
    return entry.kind == earlier.kind && entry.category == earlier.category &&
           entry.name == earlier.name;
  });
  return place == tree.end() ? 0 : static_cast<std::size_t>(place - tree.begin());
}

}  // namespace velkor::app
