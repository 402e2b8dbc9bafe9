/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The orders in which the rows of a snapshot can be shown. Each is made when it is first asked for
 * and kept, so that a search only walks along it.
 */
#ifndef VELKOR_APP_MODEL_ORDER_H
#define VELKOR_APP_MODEL_ORDER_H

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "model/snapshot.h"

namespace velkor::app {

enum class Column { title, category, poster, date, rating, status };

inline constexpr std::size_t column_count = 6;

/** The name under which a column is remembered. */
std::string_view column_key(Column column) noexcept;
/** The column of that name; nothing when there is none. */
std::optional<Column> column_with_key(std::string_view key) noexcept;

/** How the list is sorted; by default, the newest come first. */
struct Sorting {
  Column column = Column::date;
  bool descending = true;

  bool operator==(const Sorting &) const = default;
};

class Orders {
public:
  explicit Orders(SharedSnapshot snapshot) : snapshot_(std::move(snapshot)) {}

  /** All rows, ascending; rows that are equal in that column by date, then by id. */
  const std::vector<Row> &by(Column column);
  /** Whether that order has been made before. */
  [[nodiscard]] bool has(Column column) const noexcept {
    return made_[static_cast<std::size_t>(column)].has_value();
  }

private:
  [[nodiscard]] std::vector<Row> make(Column column) const;

  SharedSnapshot snapshot_;
  std::array<std::optional<std::vector<Row>>, column_count> made_;
};

}  // namespace velkor::app

#endif
