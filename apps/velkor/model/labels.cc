/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/labels.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include "support/text.h"

namespace velkor::app {

Labels::Number Labels::add_name(std::string name) {
  constexpr std::size_t most = std::numeric_limits<Number>::max();
  if (names_.size() <= most)
    names_.push_back(std::move(name));
  return static_cast<Number>(names_.size() - 1);
}

std::vector<bool> Labels::holding(std::string_view text) const {
  std::vector<bool> holding;
  holding.reserve(names_.size());
  for (const std::string &name : names_)
    holding.push_back(contains_ignoring_case(name, text));
  return holding;
}

bool Labels::has_one_of(Row row, const std::vector<bool> &numbers) const noexcept {
  if (row >= starts_.size())
    return false;
  const std::size_t end = row + 1 < starts_.size() ? starts_[row + 1] : numbers_.size();
  return std::ranges::any_of(std::span(numbers_).subspan(starts_[row], end - starts_[row]),
                             [&](Number number) { return numbers[number]; });
}

}  // namespace velkor::app
