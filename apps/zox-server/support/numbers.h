/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef ZOX_SERVER_SUPPORT_NUMBERS_H
#define ZOX_SERVER_SUPPORT_NUMBERS_H

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace velkor::server {

/** The decimal number at the start of a text; 0 when there is none or it is out of range. */
inline std::int64_t leading_number(std::string_view text) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/** The decimal number that makes up the whole text; nothing otherwise. */
inline std::optional<std::int64_t> whole_number(std::string_view text) {
  std::int64_t number = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && !text.empty() ? std::optional(number)
                                                              : std::nullopt;
}

}  // namespace velkor::server

#endif
