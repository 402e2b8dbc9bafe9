/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The whole watchlist at once, for whoever asks about one posting after the other. */
#ifndef VELKOR_FILTER_WATCHED_IDS_H
#define VELKOR_FILTER_WATCHED_IDS_H

#include <unordered_set>

#include <glib.h>

namespace velkor {

/** The post ids for which zox_watchlist_is_in_list() answers true. */
std::unordered_set<gint32> watched_ids() noexcept;

}  // namespace velkor

#endif
