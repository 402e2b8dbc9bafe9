/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Many search texts at once, for whoever tests one title after the other. */
#ifndef VELKOR_FILTER_WORD_SET_H
#define VELKOR_FILTER_WORD_SET_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <glib.h>

namespace velkor {

/**
 * Finds whether any word of a list occurs in a text, in one walk over the text however many words
 * there are. The answer is that of contains_ignoring_case() for one word after the other.
 *
 * It is the automaton of Aho and Corasick, which ends at the first hit. It holds no reference to
 * the list and is meant for one pass, since a front end may change the lists between two calls.
 */
class WordSet {
public:
  /** The words of a list of texts, up to the first null, if there is one. */
  explicit WordSet(const GSList *words) noexcept;

  /** Whether one of the words occurs in `text`; an empty word occurs everywhere. */
  [[nodiscard]] bool occurs_in(std::string_view text) const noexcept;

  /** Whether the list ended early, at an item that is null. */
  [[nodiscard]] bool cut_short() const noexcept { return cut_short_; }

private:
  /** The place of a state's row in the table. */
  using Row = std::uint32_t;
  using Words = std::vector<std::string_view>;

  static constexpr Row start = 0;
  static constexpr Row hit = UINT32_MAX;
  static constexpr Row beginning_hit = hit - 1;  // only of the beginning of a long word

  /** So many letters of a word are in the table, whose size a long text would blow up. */
  static constexpr std::size_t most_letters = 16;

  Words take(const GSList *list) noexcept;
  void assign_columns(const Words &words) noexcept;
  void add_rows(const Words &words) noexcept;
  void close_gaps() noexcept;

  [[nodiscard]] std::uint8_t column_of(char letter) const noexcept {
    return columns_[static_cast<unsigned char>(letter)];
  }
  [[nodiscard]] bool occurs_by_itself(std::string_view text) const noexcept;
  /** The row behind `row` for that letter, made if there is none. */
  Row child_of(Row row, char letter) noexcept;

  bool cut_short_ = false;
  bool everywhere_ = false;                  // one of the words is empty
  std::array<std::uint8_t, 256> columns_{};  // by byte; 0 for what stands in no word
  std::uint32_t width_ = 1;                  // how many columns there are
  std::vector<Row> rows_;                    // the next row by row and column
  std::vector<std::string> words_;           // all of them if some are long
};

}  // namespace velkor

#endif
