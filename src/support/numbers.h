/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Decimal numbers in texts, and sums that stay in range. */
#ifndef VELKOR_SUPPORT_NUMBERS_H
#define VELKOR_SUPPORT_NUMBERS_H

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace velkor {

/** The decimal number at the start of a text; 0 when there is none or it is out of range. */
inline std::int64_t leading_number(std::string_view text) noexcept {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/** The decimal number that makes up the whole text; nothing otherwise. */
inline std::optional<std::int64_t> whole_number(std::string_view text) noexcept {
  std::int64_t number = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && !text.empty() ? std::optional(number)
                                                              : std::nullopt;
}

/** The sum; the nearest 64-bit number when it is out of range. */
inline std::int64_t saturating_add(std::int64_t left, std::int64_t right) noexcept {
  using Limits = std::numeric_limits<std::int64_t>;
  if (right > 0 && left > Limits::max() - right)
    return Limits::max();
  if (right < 0 && left < Limits::min() - right)
    return Limits::min();
  return left + right;
}

}  // namespace velkor

#endif
