/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include <glib.h>

namespace velkor::ctl {
namespace {

bool same_letter(char left, char right) noexcept {
  return g_ascii_tolower(left) == g_ascii_tolower(right);
}

/** How many letters must be added, removed, replaced or exchanged with the next one. */
std::size_t distance(const std::string &left, const std::string &right) {
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  std::vector<std::size_t> before;
  for (std::size_t i = 1; i <= left.size(); ++i) {
    std::vector<std::size_t> next{i};
    next.reserve(row.size());
    for (std::size_t j = 1; j <= right.size(); ++j) {
      const bool same = same_letter(left[i - 1], right[j - 1]);
      std::size_t least = std::min({row[j] + 1, next.back() + 1, row[j - 1] + (same ? 0 : 1)});
      if (i > 1 && j > 1 && same_letter(left[i - 1], right[j - 2]) &&
          same_letter(left[i - 2], right[j - 1]))
        least = std::min(least, before[j - 2] + 1);
      next.push_back(least);
    }
    before = std::move(row);
    row = std::move(next);
  }
  return row.back();
}

}  // namespace

std::string suggestion(const std::string &word, const std::vector<std::string> &known) {
  const std::string *nearest = nullptr;
  std::size_t least = word.size() / 3 + 2;
  for (const std::string &candidate : known) {
    // Two words of a few letters have too little in common to be confused.
    const std::size_t letters = distance(word, candidate);
    if (letters < least && letters < candidate.size()) {
      least = letters;
      nearest = &candidate;
    }
  }
  return nearest == nullptr ? "" : "; did you mean " + *nearest + "?";
}

}  // namespace velkor::ctl
