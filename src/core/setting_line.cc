/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/setting_line.h"

#include <algorithm>

#include <glib.h>

namespace velkor::settings {
namespace {

bool ends_value(char letter) noexcept {
  return g_ascii_iscntrl(letter) && letter != '\t';
}

bool continues_character(char letter) noexcept {
  return (static_cast<unsigned char>(letter) & 0xC0U) == 0x80U;
}

}  // namespace

std::string_view before_control(std::string_view value) noexcept {
  return {value.begin(), std::ranges::find_if(value, ends_value)};
}

std::string_view cut(std::string_view value, std::size_t size) noexcept {
  if (value.size() <= size)
    return value;
  constexpr std::size_t max_rest = 3;  // of a character; beyond that the text is not UTF-8
  for (std::size_t end = size; end > 0 && size - end <= max_rest; --end)
    if (!continues_character(value[end]))
      return value.substr(0, end);
  return value.substr(0, size);
}

std::string_view stripped(std::string_view text) noexcept {
  constexpr std::string_view white_space = " \t\n\v\f\r";
  const std::size_t begin = std::min(text.find_first_not_of(white_space), text.size());
  return text.substr(begin, text.find_last_not_of(white_space) + 1 - begin);
}

}  // namespace velkor::settings
