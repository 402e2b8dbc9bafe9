/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Text operations that more than one layer needs: ASCII letter case, search and numbers. */
#ifndef VELKOR_SUPPORT_TEXT_H
#define VELKOR_SUPPORT_TEXT_H

#include <string>
#include <string_view>

#include <glib.h>

#include "support/owned.h"

namespace velkor {

/** The characters of a growable text; empty when there is none. */
inline std::string_view view_of(const GString *text) noexcept {
  return text == nullptr ? std::string_view() : std::string_view(text->str, text->len);
}

/** Whether both texts are equal when ASCII letters count regardless of case. */
bool equal_ignoring_case(std::string_view left, std::string_view right) noexcept;

/**
 * Whether `needle` occurs in `text` when only the ASCII letters a to z are upper-cased. Like a
 * search in zero-terminated copies, both end at their first zero byte; an empty needle occurs
 * everywhere. Makes no copies.
 */
bool contains_ignoring_case(std::string_view text, std::string_view needle) noexcept;

/**
 * The decimal integer at the start of a zero-terminated text as the standard conversion reads it
 * (leading white space and sign allowed, 0 without digits), cut to its low 32 bits.
 */
gint32 leading_integer(const char *text) noexcept;

/** The text as UTF-8: each byte that is none becomes U+FFFD. */
inline OwnedText valid_utf8(std::string_view text) noexcept {
  // GLib does not take a view of no text, which has no characters.
  return OwnedText(text.empty() ? g_strdup("")
                                : g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

/** Whether a terminal may act on the character instead of displaying it. */
bool is_unsafe(gunichar character) noexcept;

/** `number` in decimal. */
inline std::string decimal(gint32 number) noexcept {
  return std::to_string(number);
}

}  // namespace velkor

#endif
