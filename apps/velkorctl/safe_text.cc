/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/safe_text.h"

#include <array>
#include <atomic>

#include "support/text.h"

namespace velkor::ctl {
namespace {

constexpr gunichar replacement = 0xFFFD;
std::atomic<bool> ascii_only = false;

const char *ellipsis() noexcept {
  return ascii_only ? "~" : "…";
}

void append(std::string &result, gunichar character) {
  std::array<char, 6> bytes{};
  const int length = g_unichar_to_utf8(character, bytes.data());
  result.append(bytes.data(), static_cast<std::size_t>(length));
}

gunichar safe_character(gunichar character, Lines lines) noexcept {
  if (character == '\n' && lines == Lines::keep)
    return character;
  if (character == '\n' || character == '\t' || character == '\r')
    return ' ';
  return is_unsafe(character) ? replacement : character;
}

int cells_of(gunichar character) noexcept {
  if (g_unichar_iszerowidth(character))
    return 0;
  return g_unichar_iswide(character) ? 2 : 1;
}

}  // namespace

std::string safe_text(std::string_view text, Lines lines) {
  const OwnedText valid = valid_utf8(text);
  std::string result;
  result.reserve(text.size());
  for (const char *at = valid.get(); *at != '\0'; at = g_utf8_next_char(at))
    append(result, safe_character(g_utf8_get_char(at), lines));
  return ascii_only ? OwnedText(g_str_to_ascii(result.c_str(), "C")).get() : result;
}

void set_ascii_only(bool enabled) noexcept {
  ascii_only = enabled;
}

int display_width(std::string_view text) noexcept {
  int width = 0;
  const char *end = text.data() + text.size();
  for (const char *at = text.data(); at < end; at = g_utf8_next_char(at))
    width += cells_of(g_utf8_get_char(at));
  return width;
}

std::string fit(std::string_view text, int width) {
  if (display_width(text) <= width)
    return std::string(text);
  if (width < 1)
    return {};
  int used = 0;
  const char *end = text.data();
  for (; used + cells_of(g_utf8_get_char(end)) < width; end = g_utf8_next_char(end))
    used += cells_of(g_utf8_get_char(end));
  std::string result(text.data(), end);
  return result.append(ellipsis());
}

}  // namespace velkor::ctl
