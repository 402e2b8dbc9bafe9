/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/text_search.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include <glib.h>

#include "support/text.h"

namespace velkor {
namespace {

constexpr std::size_t block_size = 16;

/** So many bytes that are compared at once. */
using Block [[gnu::vector_size(block_size)]] = unsigned char;

Block load(const char *bytes) noexcept {
  Block block;
  std::memcpy(&block, bytes, sizeof block);
  return block;
}

}  // namespace

TextSearch::TextSearch(std::string_view needle) noexcept
    : needle_(needle.substr(0, needle.find('\0'))) {
  if (needle_.size() < 2)
    return;
  first_ = letter_of(needle_[0]);
  second_ = letter_of(needle_[1]);
}

TextSearch::Letter TextSearch::letter_of(char character) noexcept {
  const auto lower = static_cast<unsigned char>(g_ascii_tolower(character));
  return {
      static_cast<unsigned char>(lower ^ static_cast<unsigned char>(g_ascii_toupper(character))),
      lower};
}

/** The last block overlaps the one before; a text shorter than a block is filled up with zeros. */
bool TextSearch::occurs_in(std::string_view text) const noexcept {
  if (needle_.size() < 2)
    return contains_ignoring_case(text, needle_);
  if (text.size() < needle_.size())
    return false;
  if (text.size() <= block_size) {
    std::array<char, block_size + 1> filled{};
    text.copy(filled.data(), text.size());
    return occurs_in_block(filled.data(), text, 0);
  }
  const std::size_t last = text.size() - block_size - 1;
  for (std::size_t place = 0; place < last; place += block_size) {
    if (occurs_in_block(text.data() + place, text, place))
      return true;
  }
  return occurs_in_block(text.data() + last, text, last);
}

/** Whether the search text begins at one of the places from `place` on, which `bytes` shows. */
bool TextSearch::occurs_in_block(const char *bytes, std::string_view text,
                                 std::size_t place) const noexcept {
  const auto candidates = ((load(bytes) | first_.fold) == first_.lower) &
                          ((load(bytes + 1) | second_.fold) == second_.lower);
  const auto marks = std::bit_cast<std::array<std::uint64_t, 2>>(candidates);
  if ((marks[0] | marks[1]) == 0) [[likely]]
    return false;
  for (std::size_t step = 0; step < block_size; ++step) {
    if (candidates[step] != 0 && stands_at(text, place + step))
      return true;
  }
  return false;
}

/** A text ends at its first zero byte. */
bool TextSearch::stands_at(std::string_view text, std::size_t place) const noexcept {
  return place + needle_.size() <= text.size() &&
         equal_ignoring_case(text.substr(place, needle_.size()), needle_) &&
         text.substr(0, place).find('\0') == std::string_view::npos;
}

}  // namespace velkor
