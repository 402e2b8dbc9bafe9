/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The texts of the window in the user's language: _("text"), and ngettext() for numbers. */
#ifndef VELKOR_APP_WIDGETS_TRANSLATION_H
#define VELKOR_APP_WIDGETS_TRANSLATION_H

#include <cstdint>

#include <glib/gi18n.h>
#include <glibmm/ustring.h>

namespace velkor::app {

/** The number as the user's language writes it, with the thousands apart. */
Glib::ustring number_text(std::int64_t number);

/** A time in the user's time zone. */
Glib::ustring moment_text(std::int64_t seconds);

/** What is told of `number` things: the texts hold "%1" where the number stands. */
Glib::ustring counted(const char *one, const char *many, std::int64_t number);

}  // namespace velkor::app

#endif
