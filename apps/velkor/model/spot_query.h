/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Which rows of a snapshot the list shows, and in which order. */
#ifndef VELKOR_APP_MODEL_SPOT_QUERY_H
#define VELKOR_APP_MODEL_SPOT_QUERY_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "model/order.h"
#include "model/snapshot.h"

namespace velkor::app {

/** What the list is narrowed by beside the tree and the search. */
struct SpotConditions {
  std::int64_t since = 0;  // lowest time of posting
  std::optional<std::int32_t> status{};
  std::optional<std::set<std::int32_t>> ids{};  // only these
  // Each occurs in the name of the poster, of a tag or of a newsgroup, regardless of case.
  std::string poster{};
  std::string tag{};
  std::string newsgroup{};

  bool operator==(const SpotConditions &) const = default;
};

struct SpotQuery {
  std::size_t entry = 0;   // of the tree
  std::string text{};      // occurs in the title, regardless of the case of a to z
  std::uint8_t marks = 0;  // a sum of Mark: only rows with one of them; 0 for all
  SpotConditions conditions{};
  Sorting sorting{};

  bool operator==(const SpotQuery &) const = default;
};

/** The rows of `snapshot` that the query asks for; `orders` are those of the same snapshot. */
std::vector<Row> select_rows(const Snapshot &snapshot, Orders &orders, const SpotQuery &query);

/** The conditions of a query, in the order in which they are tested. */
enum class Condition { none, entry, marks, period, status, ids, search, poster, tag, newsgroup };

/** The first condition of the query that keeps the row out of the list; none when it is listed. */
Condition unmet_condition(const Snapshot &snapshot, const SpotQuery &query, Row row);

/** Where the posting stands among `rows`; nothing when it is not among them. */
std::optional<std::size_t> place_of(const Snapshot &snapshot, const std::vector<Row> &rows,
                                    std::int32_t id) noexcept;

/**
 * The entry of `tree` that stands for the same as `earlier` did in another tree; the first one,
 * which holds everything, when there is none.
 */
std::size_t matching_entry(const std::vector<TreeEntry> &tree, const TreeEntry &earlier) noexcept;

}  // namespace velkor::app

#endif
