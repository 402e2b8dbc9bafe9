/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Names of which each row of a table has some, such as its tags: each name is stored once, and a
 * row takes two bytes for each of its own.
 */
#ifndef VELKOR_APP_MODEL_LABELS_H
#define VELKOR_APP_MODEL_LABELS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/posting_table.h"

namespace velkor::app {

class Labels {
public:
  using Number = std::uint16_t;

  /** Gives a name its number; names beyond the last number share that one. */
  Number add_name(std::string name);
  /** To be called for each row in turn, before its numbers are added. */
  void begin_row() { starts_.push_back(static_cast<std::uint32_t>(numbers_.size())); }
  void add(Number number) { numbers_.push_back(number); }

  /** For each number, whether its name holds the text, regardless of the case of a to z. */
  [[nodiscard]] std::vector<bool> holding(std::string_view text) const;
  /** Whether the row has one of them. */
  [[nodiscard]] bool has_one_of(Row row, const std::vector<bool> &numbers) const noexcept;

private:
  std::vector<std::string> names_;
  std::vector<Number> numbers_;
  std::vector<std::uint32_t> starts_;
};

}  // namespace velkor::app

#endif
