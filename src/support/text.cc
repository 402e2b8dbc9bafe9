/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace velkor {
namespace {

std::string_view up_to_zero(std::string_view text) noexcept {
  return text.substr(0, std::min(text.find('\0'), text.size()));
}

bool starts_with_ignoring_case(const char *text, std::string_view upper) noexcept {
  return std::ranges::equal(
      upper, std::string_view(text, upper.size()),
      [](char wanted, char found) { return g_ascii_toupper(wanted) == g_ascii_toupper(found); });
}

/** The first place from `begin` on where either letter stands, or `end`. */
const char *find_either(const char *begin, const char *end, char lower, char upper) noexcept {
  const auto length = static_cast<std::size_t>(end - begin);
  const auto *first = static_cast<const char *>(std::memchr(begin, lower, length));
  if (lower == upper)
    return first == nullptr ? end : first;
  const auto rest = static_cast<std::size_t>((first == nullptr ? end : first) - begin);
  const auto *second = static_cast<const char *>(std::memchr(begin, upper, rest));
  if (second != nullptr)
    return second;
  return first == nullptr ? end : first;
}

}  // namespace

bool equal_ignoring_case(std::string_view left, std::string_view right) noexcept {
  return left.size() == right.size() && starts_with_ignoring_case(left.data(), right);
}

bool contains_ignoring_case(std::string_view text, std::string_view needle) noexcept {
  text = up_to_zero(text);
  needle = up_to_zero(needle);
  if (needle.empty())
    return true;
  if (needle.size() > text.size())
    return false;
  const char lower = g_ascii_tolower(needle.front());
  const char upper = g_ascii_toupper(needle.front());
  const char *end = text.data() + (text.size() - needle.size() + 1);
  for (const char *place = find_either(text.data(), end, lower, upper); place != end;
       place = find_either(place + 1, end, lower, upper)) {
    if (starts_with_ignoring_case(place, needle))
      return true;
  }
  return false;
}

gint32 leading_integer(const char *text) noexcept {
  // Nearly all are a few digits, for which the general conversion does too much.
  constexpr int most_digits = 9;
  gint32 number = 0;
  int digits = 0;
  while (digits < most_digits && g_ascii_isdigit(text[digits]))
    number = number * 10 + (text[digits++] - '0');
  if (digits > 0 && !g_ascii_isdigit(text[digits]))
    return number;
  return static_cast<gint32>(static_cast<guint32>(std::strtol(text, nullptr, 10)));
}

bool is_unsafe(gunichar character) noexcept {
  switch (g_unichar_type(character)) {
  case G_UNICODE_CONTROL:
  case G_UNICODE_LINE_SEPARATOR:
  case G_UNICODE_PARAGRAPH_SEPARATOR:
    return true;
  default:
    return (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069) || character == 0x200E ||
           character == 0x200F || character == 0x061C;
  }
}

}  // namespace velkor
