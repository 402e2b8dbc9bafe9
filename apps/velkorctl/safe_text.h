/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Texts of others made fit for a terminal: no control character, no escape sequence and no
 * direction mark gets through, and widths are counted in terminal cells.
 */
#ifndef VELKORCTL_SAFE_TEXT_H
#define VELKORCTL_SAFE_TEXT_H

#include <string>
#include <string_view>

#include <glib.h>

namespace velkor::ctl {

enum class Lines { join, keep };

/**
 * `text` as valid UTF-8 in which white space is a plain blank (line feeds stay with
 * `Lines::keep`) and every other control or direction character is U+FFFD.
 */
std::string safe_text(std::string_view text, Lines lines = Lines::join);

/** The cells that a terminal uses for `text`, which must be valid UTF-8. */
int display_width(std::string_view text) noexcept;

/** The longest beginning of `text` of at most `width` cells; a cut is marked with "…". */
std::string fit(std::string_view text, int width);

/** Whether a terminal may act on the character instead of showing it. */
bool is_unsafe(gunichar character) noexcept;

}  // namespace velkor::ctl

#endif
