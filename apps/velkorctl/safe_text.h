/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Texts from outside made safe for a terminal, without control characters, escape sequences and
 * direction marks; and their widths in terminal cells.
 */
#ifndef VELKORCTL_SAFE_TEXT_H
#define VELKORCTL_SAFE_TEXT_H

#include <string>
#include <string_view>

#include <glib.h>

namespace velkor::ctl {

enum class Lines { join, keep };

/**
 * `text` as valid UTF-8 in which tabs and line breaks are spaces (line feeds stay with
 * `Lines::keep`) and every other control or direction character is U+FFFD.
 */
std::string safe_text(std::string_view text, Lines lines = Lines::join);

/**
 * Whether texts are ASCII from now on, with "?" for what has no like there: for a terminal that
 * does not take UTF-8. Off at first.
 */
void set_ascii_only(bool enabled) noexcept;

/** The cells that a terminal uses for `text`, which must be valid UTF-8. */
int display_width(std::string_view text) noexcept;

/** As much of the start of `text` as fits into `width` cells; "…" marks a cut. */
std::string fit(std::string_view text, int width);

}  // namespace velkor::ctl

#endif
