/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Changes of the watchlist that several layers make. */
#ifndef VELKOR_FILTER_WATCHLIST_ENTRIES_H
#define VELKOR_FILTER_WATCHLIST_ENTRIES_H

#include <glib.h>

namespace velkor {

/** Puts entries, a list of ZoxString that is taken over, at the end; nothing is saved. */
void append_watched(GSList *entries) noexcept;

/** Notes that a posting on the watchlist has changed. Any thread. */
void note_watched_change() noexcept;

}  // namespace velkor

#endif
