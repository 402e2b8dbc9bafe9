/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/order.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <numeric>
#include <string>
#include <tuple>

#include <glib.h>

#include "support/owned.h"

namespace velkor::app {
namespace {

constexpr std::array<std::string_view, column_count> keys{"title", "category", "poster",
                                                          "date",  "rating",   "status"};

/** By which a reader of the user's language expects texts to be sorted. */
std::string sort_key(std::string_view text) {
  const auto length = static_cast<gssize>(text.size());
  const OwnedText folded(g_utf8_casefold(text.data(), length));
  return OwnedText(g_utf8_collate_key(folded.get(), -1)).get();
}

/** The place of each text among the others, equal ones sharing theirs. */
std::vector<std::int64_t> ranks_of(const std::vector<std::string> &texts) {
  std::vector<std::pair<std::string, std::size_t>> sorted;
  sorted.reserve(texts.size());
  for (std::size_t place = 0; place < texts.size(); ++place)
    sorted.emplace_back(sort_key(texts[place]), place);
  std::ranges::sort(sorted);
  std::vector<std::int64_t> ranks(texts.size());
  std::int64_t rank = 0;
  for (std::size_t place = 0; place < sorted.size(); ++place) {
    if (place > 0 && sorted[place].first != sorted[place - 1].first)
      ++rank;
    ranks[sorted[place].second] = rank;
  }
  return ranks;
}

std::vector<std::int64_t> title_ranks(const PostingTable &table) {
  std::vector<std::string> titles;
  titles.reserve(table.size());
  for (Row row = 0; row < table.size(); ++row)
    titles.emplace_back(table.title(row));
  return ranks_of(titles);
}

std::vector<std::int64_t> poster_ranks(const PostingTable &table) {
  const std::vector<std::int64_t> ranks = ranks_of(table.posters());
  std::vector<std::int64_t> result(table.size());
  for (Row row = 0; row < table.size(); ++row)
    result[row] = ranks[table.poster_number(row)];
  return result;
}

/** The ranks of texts of which there are few, such as the words for the states. */
template <typename NameOf>
std::vector<std::int64_t> name_ranks(const PostingTable &table, const NameOf &name_of) {
  std::map<std::string, std::int64_t> by_key;
  std::map<const std::string *, std::string> key_of;
  for (Row row = 0; row < table.size(); ++row)
    if (const std::string *name = &name_of(row); key_of.try_emplace(name).second)
      by_key.try_emplace(key_of[name] = sort_key(*name));
  std::int64_t rank = 0;
  for (auto &[key, place] : by_key)
    place = rank++;
  std::vector<std::int64_t> ranks(table.size());
  for (Row row = 0; row < table.size(); ++row)
    ranks[row] = by_key[key_of[&name_of(row)]];
  return ranks;
}

std::vector<std::int64_t> ranks_by(const Snapshot &snapshot, Column column) {
  const PostingTable &table = snapshot.table;
  std::vector<std::int64_t> ranks(column == Column::date || column == Column::rating ? table.size()
                                                                                     : 0);
  switch (column) {
  case Column::title:
    return title_ranks(table);
  case Column::poster:
    return poster_ranks(table);
  case Column::category:
    return name_ranks(
        table, [&](Row row) -> auto & { return snapshot.category_name(row); });
  case Column::status:
    return name_ranks(
        table, [&](Row row) -> auto & { return snapshot.status_name(row); });
  case Column::date:
    break;  // what decides between equal ones anyway
  case Column::rating:
    for (Row row = 0; row < table.size(); ++row)
      ranks[row] = table.rating(row);
  }
  return ranks;
}

}  // namespace

std::string_view column_key(Column column) noexcept {
  return keys[static_cast<std::size_t>(column)];
}

std::optional<Column> column_with_key(std::string_view key) noexcept {
  const auto place = std::ranges::find(keys, key);
  return place == keys.end() ? std::nullopt
                             : std::optional(static_cast<Column>(place - keys.begin()));
}

const std::vector<Row> &Orders::by(Column column) {
  auto &made = made_[static_cast<std::size_t>(column)];
  if (!made)
    made = make(column);
  return *made;
}

std::vector<Row> Orders::make(Column column) const {
  const PostingTable &table = snapshot_->table;
  const std::vector<std::int64_t> ranks = ranks_by(*snapshot_, column);
  std::vector<Row> rows(table.size());
  std::iota(rows.begin(), rows.end(), Row{0});
  std::ranges::sort(
      rows, {}, [&](Row row) { return std::tuple(ranks[row], table.stamp(row), table.id(row)); });
  return rows;
}

}  // namespace velkor::app
