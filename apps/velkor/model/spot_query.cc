/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/spot_query.h"

#include <algorithm>

#include "support/text.h"

namespace velkor::app {
namespace {

/** A query made ready to test many rows. */
class RowTest {
public:
  RowTest(const Snapshot &snapshot, const SpotQuery &query)
      : snapshot_(snapshot), query_(query), wanted_(query.conditions) {
    if (!wanted_.tag.empty())
      tags_ = snapshot.tags.holding(wanted_.tag);
    if (!wanted_.newsgroup.empty())
      newsgroups_ = snapshot.newsgroups.holding(wanted_.newsgroup);
  }

  [[nodiscard]] Condition unmet(Row row) const {
    const PostingTable &table = snapshot_.table;
    if (!snapshot_.tree[query_.entry].rows.contains(row))
      return Condition::entry;
    if (query_.marks != 0 && !table.has(row, static_cast<Mark>(query_.marks)))
      return Condition::marks;
    if (table.stamp(row) < wanted_.since)
      return Condition::period;
    if (wanted_.status && table.status(row) != *wanted_.status)
      return Condition::status;
    if (wanted_.ids && !wanted_.ids->contains(table.id(row)))
      return Condition::ids;
    if (!contains_ignoring_case(table.title(row), query_.text))
      return Condition::search;
    return unmet_name(row);
  }

private:
  [[nodiscard]] Condition unmet_name(Row row) const {
    if (!contains_ignoring_case(snapshot_.table.poster(row), wanted_.poster))
      return Condition::poster;
    if (tags_ && !snapshot_.tags.has_one_of(row, *tags_))
      return Condition::tag;
    if (newsgroups_ && !snapshot_.newsgroups.has_one_of(row, *newsgroups_))
      return Condition::newsgroup;
    return Condition::none;
  }

  const Snapshot &snapshot_;
  const SpotQuery &query_;
  const SpotConditions &wanted_;
  std::optional<std::vector<bool>> tags_;
  std::optional<std::vector<bool>> newsgroups_;
};

/** In the order of the table, in which the titles lie in memory. */
std::vector<bool> matching_rows(const Snapshot &snapshot, const SpotQuery &query) {
  std::vector<bool> matching(snapshot.table.size());
  if (query.entry >= snapshot.tree.size())
    return matching;
  const RowTest test(snapshot, query);
  for (Row row = 0; row < snapshot.table.size(); ++row)
    matching[row] = test.unmet(row) == Condition::none;
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

Condition unmet_condition(const Snapshot &snapshot, const SpotQuery &query, Row row) {
  return query.entry < snapshot.tree.size() ? RowTest(snapshot, query).unmet(row)
                                            : Condition::entry;
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
