/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/posting_table.h"

#include <algorithm>
#include <limits>

namespace velkor::app {
namespace {

/** The numbers of the service are small; anything else is as unknown as they come. */
std::int8_t small(std::int32_t number) noexcept {
  using Limits = std::numeric_limits<std::int8_t>;
  return static_cast<std::int8_t>(std::clamp<std::int32_t>(number, Limits::min(), Limits::max()));
}

}  // namespace

Row PostingTable::add(const PostingFields &fields) {
  rows_.push_back({.stamp = fields.stamp,
                   .title_start = static_cast<std::uint32_t>(titles_.size()),
                   .id = fields.id,
                   .poster = poster_number_of(fields.poster),
                   .rating = fields.rating,
                   .status = small(fields.status),
                   .category = small(fields.category),
                   .sub_category = small(fields.sub_category),
                   .marks = fields.marks});
  titles_ += fields.title;
  return size() - 1;
}

void PostingTable::complete() {
  poster_numbers_.clear();
  rows_.shrink_to_fit();
  titles_.shrink_to_fit();
  by_id_.reserve(rows_.size());
  for (Row row = 0; row < size(); ++row)
    by_id_.emplace_back(id(row), row);
  std::ranges::sort(by_id_);
}

std::string_view PostingTable::title(Row row) const noexcept {
  const std::size_t start = rows_[row].title_start;
  const std::size_t end = row + 1 < size() ? rows_[row + 1].title_start : titles_.size();
  return std::string_view(titles_).substr(start, end - start);
}

const std::string &PostingTable::poster(Row row) const noexcept {
  return posters_[rows_[row].poster];
}

std::optional<Row> PostingTable::find(std::int32_t id) const noexcept {
  const auto place = std::ranges::lower_bound(by_id_, std::pair<std::int32_t, Row>(id, 0));
  return place != by_id_.end() && place->first == id ? std::optional(place->second) : std::nullopt;
}

std::uint32_t PostingTable::poster_number_of(std::string_view name) {
  const auto [place, added] =
      poster_numbers_.try_emplace(std::string(name), static_cast<std::uint32_t>(posters_.size()));
  if (added)
    posters_.emplace_back(name);
  return place->second;
}

}  // namespace velkor::app
