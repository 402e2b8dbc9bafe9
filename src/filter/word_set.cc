/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/word_set.h"

#include <algorithm>

#include "support/slist.h"
#include "support/text.h"

namespace velkor {

WordSet::WordSet(const GSList *words) noexcept {
  const Words taken = take(words);
  assign_columns(taken);
  rows_.assign(width_, start);
  add_rows(taken);
  close_gaps();
}

/** The words that are to be found, none of them empty. */
WordSet::Words WordSet::take(const GSList *list) noexcept {
  Words words;
  bool has_long = false;
  for (const GString *word : Items<const GString>(list)) {
    if (word == nullptr) {
      cut_short_ = true;
      break;
    }
    const std::string_view text(word->str);
    if (text.empty())
      everywhere_ = true;
    else
      words.push_back(text);
    has_long = has_long || text.size() > most_letters;
  }
  if (has_long)
    words_.assign(words.begin(), words.end());
  return words;
}

/** Both cases of a letter share a column; a zero byte is in no word, so 255 columns suffice. */
void WordSet::assign_columns(const Words &words) noexcept {
  for (const std::string_view word : words) {
    for (const char letter : word.substr(0, most_letters)) {
      if (column_of(letter) != 0)
        continue;
      const auto column = static_cast<std::uint8_t>(width_++);
      columns_[static_cast<unsigned char>(g_ascii_toupper(letter))] = column;
      columns_[static_cast<unsigned char>(g_ascii_tolower(letter))] = column;
    }
  }
}

WordSet::Row WordSet::child_of(Row row, char letter) noexcept {
  const std::size_t place = row + column_of(letter);
  if (rows_[place] == start) {
    rows_[place] = static_cast<Row>(rows_.size());
    rows_.resize(rows_.size() + width_, start);
  }
  return rows_[place];
}

/**
 * Adds the words letter by letter, all of them abreast: the rows that most titles reach lie
 * together at the front, and a row comes behind those of all shorter beginnings.
 */
void WordSet::add_rows(const Words &words) noexcept {
  struct Open {
    std::string_view rest;
    Row end;
    Row row;
  };
  std::vector<Open> open;
  for (const std::string_view word : words)
    open.push_back(
        {word.substr(0, most_letters), word.size() > most_letters ? beginning_hit : hit, start});
  while (!open.empty()) {
    for (const Open &word : open) {
      Row &next = rows_[word.row + column_of(word.rest.front())];
      if (word.rest.size() == 1)
        next = std::max(next, word.end);
    }
    std::erase_if(open, [this](const Open &word) {
      return rows_[word.row + column_of(word.rest.front())] >= beginning_hit;
    });
    for (Open &word : open) {
      word.row = child_of(word.row, word.rest.front());
      word.rest.remove_prefix(1);
    }
  }
}

/** Where a row knows no way on, the row of the longest ending that is a beginning does. */
void WordSet::close_gaps() noexcept {
  std::vector<Row> endings(rows_.size() / width_, start);
  for (Row row = start; row < rows_.size(); row += width_) {
    const Row ending = endings[row / width_];
    for (Row column = 1; column < width_; ++column) {
      Row &next = rows_[row + column];
      const Row shorter = row == start ? start : rows_[ending + column];
      if (next == start || shorter == hit)
        next = shorter;
      else if (next < beginning_hit)
        endings[next / width_] = shorter;
    }
  }
}

/** What decides when the beginning of a long word was found, which is rare. */
bool WordSet::occurs_by_itself(std::string_view text) const noexcept {
  return std::ranges::any_of(
      words_, [text](const std::string &word) { return contains_ignoring_case(text, word); });
}

bool WordSet::occurs_in(std::string_view text) const noexcept {
  if (everywhere_ || width_ == 1)
    return everywhere_;
  Row row = start;
  for (const char letter : text) {
    row = rows_[row + column_of(letter)];
    if (row >= beginning_hit)
      return row == hit || occurs_by_itself(text);
    if (letter == '\0')
      return false;
  }
  return false;
}

}  // namespace velkor
