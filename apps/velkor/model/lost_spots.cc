/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/lost_spots.h"

#include <algorithm>

#include "support/text.h"

namespace velkor::app {
namespace {

constexpr std::size_t titles_told = 5;
constexpr std::int64_t seconds_a_day = 86400;
constexpr std::int32_t deleted_status = -2;  // and what is removed at once, below it
constexpr std::int32_t removed_status = -3;

bool is_deleted(std::int32_t status) noexcept {
  return status == deleted_status || status == removed_status;
}

}  // namespace

LostSpots spots_with_words(const Snapshot &snapshot, const std::vector<std::string> &words) {
  const PostingTable &table = snapshot.table;
  LostSpots lost;
  for (Row row = 0; row < table.size(); ++row) {
    const std::string_view title = table.title(row);
    if (is_deleted(table.status(row)) ||
        std::ranges::none_of(words, [title](const std::string &word) {
          return contains_ignoring_case(title, word);
        }))
      continue;
    ++lost.count;
    if (lost.titles.size() < titles_told)
      lost.titles.emplace_back(title);
  }
  return lost;
}

std::size_t spots_older_than(const Snapshot &snapshot, std::int32_t days, std::int64_t now) {
  const PostingTable &table = snapshot.table;
  const std::int64_t limit = now - days * seconds_a_day;
  std::size_t count = 0;
  for (Row row = 0; row < table.size(); ++row)
    if (table.stamp(row) < limit && !snapshot.watched.contains(table.id(row)))
      ++count;
  return count;
}

std::size_t spots_of_an_emptied_list(const Snapshot &snapshot,
                                     const std::unordered_set<std::int32_t> &watched,
                                     std::int32_t days, std::int64_t now) {
  constexpr std::size_t a_few = 10;
  const PostingTable &table = snapshot.table;
  const std::int64_t limit = now - days * seconds_a_day;
  std::size_t count = 0;
  for (Row row = 0; row < table.size(); ++row) {
    if (watched.contains(table.id(row)))
      continue;
    if (table.stamp(row) >= limit)
      return 0;
    ++count;
  }
  return count > a_few ? count : 0;
}

}  // namespace velkor::app
