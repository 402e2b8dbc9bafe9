/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What one line of velkor.conf can hold. */
#ifndef VELKOR_CORE_SETTING_LINE_H
#define VELKOR_CORE_SETTING_LINE_H

#include <cstddef>
#include <string_view>

namespace velkor::settings {

/** The reader's buffer, its final zero byte included: what is longer becomes another line. */
inline constexpr std::size_t line_buffer_size = 1024;

/** The number of bytes that the line of `key` has for its value. */
constexpr std::size_t room_for_value(std::string_view key) noexcept {
  return line_buffer_size - 1 - key.size() - 1;
}

/** The value up to its first control character. A tab is none: it comes back from the file. */
std::string_view before_control(std::string_view value) noexcept;

/** At most `size` bytes from the start of the value, without a part of a UTF-8 character. */
std::string_view cut(std::string_view value, std::size_t size) noexcept;

/** The text without the white space around it. */
std::string_view stripped(std::string_view text) noexcept;

}  // namespace velkor::settings

#endif
