/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The display document: the postings as XML for the front end's renderer. The renderer puts the
 * postings in the order that "SortMode" and "SortRichting" name. Texts stand in CDATA sections as
 * they are, unescaped.
 */
#ifndef VELKOR_ZOX_EVENTS_SORT_H
#define VELKOR_ZOX_EVENTS_SORT_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * zox_events_sort() over the filtered set. Threads: one at a time, hand-over allowed.
 * @param textFunc  see there
 * @return see there
 */
ZoxString *zox_events_sort_filtered(ZoxTextFunc textFunc);

/**
 * zox_events_sort() over all postings. Threads: one at a time, hand-over allowed.
 * @param textFunc  see there
 * @return see there
 */
ZoxString *zox_events_sort_total(ZoxTextFunc textFunc);

/**
 * Prints the display document of `core->eventlist` for the filter applied last: head with counters,
 * times, watchlist and page script, then the postings, divided by main category if the filter says
 * so. `textFunc` is called while the event list is locked for reading and must not change it.
 * Asserts "core->config", "data_dir", and "data", "path_tmp2", "path_tmp3", "path_tmp4" and
 * "sortTags" for parts that could not be made. Threads: one at a time, hand-over allowed.
 * @param filtered  1 for the filtered set, any other number for all postings; the number in the
 * head is that of the filtered set either way
 * @param textFunc  converts announcement, description, signature and reactions; may be null
 * @return a new text
 */
ZoxString *zox_events_sort(gint32 filtered, ZoxTextFunc textFunc);

/**
 * As zox_events_sort(), but with chosen postings of `core->eventlist` in a chosen order; the number
 * in the head is theirs. Threads: one at a time, hand-over allowed.
 * @param ids       numbers of postings; one that is not in the list is passed over, but counted in
 * the head. May be null when there are none
 * @param count     how many
 * @param textFunc  see there
 * @return a new text
 */
ZoxString *zox_events_sort_ids(const gint32 *ids, guint32 count, ZoxTextFunc textFunc);

/**
 * Prints the order that a filter asks for: a "SortMode" line and a "SortRichting" line. Does not
 * need the core. Threads: any, own data.
 * @param filter  the filter
 * @return a new text; without the first line, and with a warning, for an unknown `sortMode`
 */
ZoxString *zox_events_sort_apply_filter(const ZoxFilter *filter);

/**
 * Prints one posting as "Event", with derived values and its forum. A line is cut at 65534 bytes;
 * an unknown newsgroup gives a warning and no line, one without a name no line. Asserts
 * "core->config", "event" (`posting`), and "tmp", "url", "groupId" and "track" for parts that are
 * missing. Threads: one at a time, hand-over allowed.
 * @param posting   the posting
 * @param indent    non-zero to put one more tab before every line
 * @param position  printed as "Pos"
 * @param textFunc  as for zox_events_sort()
 * @return a new text
 */
ZoxString *zox_events_sort_print(const ZoxEvent *posting, gint32 indent, gint32 position,
                                 ZoxTextFunc textFunc);

/**
 * Prints the HTML table of a posting's category, tags, state, link and reason of removal. Texts are
 * not escaped. Asserts "event" (`posting`), "url", and "tmp" (no tag is null). Threads: one at a
 * time, hand-over allowed.
 * @param posting  the posting
 * @return a new text of one line
 */
ZoxString *zox_events_sort_parse_tags(const ZoxEvent *posting);

G_END_DECLS

#endif
