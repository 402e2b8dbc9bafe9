/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The pass of a filter over the event list, which makes the filtered set. */
#ifndef VELKOR_STORE_FILTER_PASS_H
#define VELKOR_STORE_FILTER_PASS_H

#include <velkor/zox_eventlist.h>
#include <velkor/zox_filter.h>

namespace velkor {

/**
 * Makes `filter` the active one and the filtered set anew from the postings that it accepts.
 * @return how many there are
 */
guint filter_entries(ZOXEventlist *list, const ZoxFilter &filter) noexcept;

/** Adds the posting to the filtered set if the list holds it. */
void add_to_filtered(ZOXEventlist *list, gint32 postId) noexcept;

}  // namespace velkor

#endif
