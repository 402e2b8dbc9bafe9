/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The postings as the list shows them: a few fields of each, packed, so that a hundred thousand
 * rows take little memory and a search walks through it in order. A row number stays valid for one
 * table.
 */
#ifndef VELKOR_APP_MODEL_POSTING_TABLE_H
#define VELKOR_APP_MODEL_POSTING_TABLE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velkor::app {

using Row = std::uint32_t;

/** What is to be told about a posting beside its fields; the values are added up. */
enum Mark : std::uint8_t {
  mark_new = 1,  // since the update before the last one
  mark_hit = 2,  // a watcher matched it in the latest update
};

/** One posting on its way into a table. */
struct PostingFields {
  std::int32_t id = 0;
  std::string_view title{};
  std::string_view poster{};
  std::int64_t stamp = 0;
  std::int32_t rating = 0;  // scaled to 100
  std::int32_t status = 0;
  std::int32_t category = 0;
  std::int32_t sub_category = 0;
  std::uint8_t marks = 0;
};

class PostingTable {
public:
  /** @return the number of the new row */
  Row add(const PostingFields &fields);
  /** To be called once after the last posting. */
  void complete();

  [[nodiscard]] Row size() const noexcept { return static_cast<Row>(rows_.size()); }
  [[nodiscard]] std::int32_t id(Row row) const noexcept { return rows_[row].id; }
  [[nodiscard]] std::string_view title(Row row) const noexcept;
  [[nodiscard]] const std::string &poster(Row row) const noexcept;
  [[nodiscard]] std::int64_t stamp(Row row) const noexcept { return rows_[row].stamp; }
  [[nodiscard]] std::int32_t rating(Row row) const noexcept { return rows_[row].rating; }
  [[nodiscard]] std::int32_t status(Row row) const noexcept { return rows_[row].status; }
  [[nodiscard]] std::int32_t category(Row row) const noexcept { return rows_[row].category; }
  [[nodiscard]] std::int32_t sub_category(Row row) const noexcept {
    return rows_[row].sub_category;
  }
  [[nodiscard]] bool has(Row row, Mark mark) const noexcept {
    return (rows_[row].marks & mark) != 0;
  }

  /** The row of that posting; nothing when the table does not have it. */
  [[nodiscard]] std::optional<Row> find(std::int32_t id) const noexcept;

  /** The posters without repetition, by the numbers of poster_number(). */
  [[nodiscard]] const std::vector<std::string> &posters() const noexcept { return posters_; }
  [[nodiscard]] std::uint32_t poster_number(Row row) const noexcept { return rows_[row].poster; }

private:
  struct Packed {
    std::int64_t stamp;
    std::uint32_t title_start;
    std::int32_t id;
    std::uint32_t poster;
    std::int32_t rating;
    std::int8_t status;
    std::int8_t category;
    std::int8_t sub_category;
    std::uint8_t marks;
  };

  std::uint32_t poster_number_of(std::string_view name);

  std::vector<Packed> rows_;
  std::string titles_;
  std::vector<std::string> posters_;
  std::unordered_map<std::string, std::uint32_t> poster_numbers_;
  std::vector<std::pair<std::int32_t, Row>> by_id_;
};

}  // namespace velkor::app

#endif
