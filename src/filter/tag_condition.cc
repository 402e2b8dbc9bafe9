/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/tag_condition.h"

#include <algorithm>
#include <string_view>

#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr unsigned no_group = 4;
constexpr unsigned no_number = 64;

/** The group that a tag code belongs to, from 0. */
unsigned group_of(std::string_view code) noexcept {
  if (code.empty() || code.front() < 'a' || code.front() > 'd')
    return no_group;
  return static_cast<unsigned>(code.front() - 'a');
}

bool is_digit(char character) noexcept {
  return character >= '0' && character <= '9';
}

/** The number behind the letter, if it is below 64 and written as the vocabulary writes it. */
unsigned number_of(std::string_view code) noexcept {
  const std::string_view digits = code.substr(1);
  if (digits.empty() || digits.size() > 2 || !std::ranges::all_of(digits, is_digit))
    return no_number;
  if (digits.size() == 1)
    return static_cast<unsigned>(digits[0] - '0');
  const auto number = static_cast<unsigned>((digits[0] - '0') * 10 + digits[1] - '0');
  return number < 10 ? no_number : std::min(number, no_number);
}

}  // namespace

TagCondition::TagCondition(const GSList *codes) noexcept : codes_(codes) {
  for (const GString *item : Items<const GString>(codes)) {
    const std::string_view code = view_of(item);
    const unsigned group = group_of(code);
    if (group == no_group)
      continue;
    required_ |= 1U << group;
    const unsigned number = number_of(code);
    if (number == no_number)
      has_others_ = true;
    else
      numbers_[group] |= std::uint64_t{1} << number;
  }
}

bool TagCondition::met_by(const GSList *tags) const noexcept {
  unsigned met = 0;
  for (const GSList *cell = tags; cell != nullptr && met != required_; cell = cell->next)
    met |= group_met_by(static_cast<const GString *>(cell->data));
  return met == required_;
}

/** The bit of the tag's group if the tag is one of the codes; else 0. */
unsigned TagCondition::group_met_by(const GString *tag) const noexcept {
  const std::string_view code = view_of(tag);
  const unsigned group = group_of(code);
  if (group == no_group)
    return 0;
  const unsigned number = number_of(code);
  const bool met = number != no_number
                       ? ((numbers_[group] >> number) & 1U) != 0
                       : has_others_ && std::ranges::any_of(Items<const GString>(codes_),
                                                            [code](const GString *wanted) {
                                                              return view_of(wanted) == code;
                                                            });
  return met ? 1U << group : 0;
}

}  // namespace velkor
