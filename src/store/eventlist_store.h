/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * What the operations of the event list share. All of it needs the list's lock held for writing,
 * which debug builds check; but drop_tree() needs no lock, and note_changes(), forget_changes(),
 * merge(), remove_aged(), change_or_add() and reload() take it themselves.
 *
 * The filtered set holds its entries without references. What leaves the list while it is still in
 * that set is therefore kept until the set goes, and an earlier filter until the list goes, since
 * a front end may still look at it.
 */
#ifndef VELKOR_STORE_EVENTLIST_STORE_H
#define VELKOR_STORE_EVENTLIST_STORE_H

#include <functional>
#include <vector>

#include <velkor/zox_eventlist.h>

#include "filter/filter_record.h"
#include "store/event_table.h"
#include "store/merge_log.h"

namespace velkor {

/** Drops every entry of a list's table and the table; complains when there is none. */
void drop_tree(EventTable tree) noexcept;

/** Replaces the filtered set by `filtered`, which may be null. */
void set_filtered(ZOXEventlist *list, EventTable filtered) noexcept;

/** Replaces the active filter by `filter`, which may be null. */
void set_active_filter(ZOXEventlist *list, OwnedFilter filter) noexcept;

/** Releases what was kept; for the list's end. */
void release_kept(ZOXEventlist *list) noexcept;

/** From now on until replace_tree(), notes which entries change. The lock is taken here. */
void note_changes(ZOXEventlist *list) noexcept;

/** Ends that without replace_tree(). The lock is taken here. */
void forget_changes(ZOXEventlist *list) noexcept;

/**
 * Replaces the table by one that was made since note_changes(), in which entries that have changed
 * meanwhile are as they are now.
 * @return the earlier one, for drop_tree()
 */
EventTable replace_tree(ZOXEventlist *list, EventTable tree) noexcept;

/** Notes that the entry's posting is another one now. */
void note_change(ZOXEventlist *list, gint32 postId) noexcept;

/** Puts `object` into the list; true when it replaced an entry. */
bool put_entry(ZOXEventlist *list, OwnedEventObject object) noexcept;

/** Takes the entry out of the list; false when there is none. */
bool remove_entry(ZOXEventlist *list, gint32 postId) noexcept;

/**
 * Merges as zox_eventlist_merge() does; takes the lock itself.
 * @param log  receives what becomes of each posting; null if nobody wants to know
 */
void merge(ZOXEventlist *list, GSList *objects, ZoxEventlistProgress progress, gpointer userData,
           MergeLog *log) noexcept;

/**
 * Does what zox_eventlist_cleanup() does; takes the lock itself.
 * @return the ids of the postings that were removed
 */
std::vector<gint32> remove_aged(ZOXEventlist *list) noexcept;

/**
 * Changes the posting as the list holds it at that moment, or a copy of `known` where it holds
 * none, which it then gets; takes the lock itself.
 */
void change_or_add(ZOXEventlist *list, const ZoxEvent &known,
                   const std::function<void(ZoxEvent &)> &change) noexcept;

/**
 * Loads the list as zox_eventlist_load() does. Only while the file that this process read or wrote
 * last cannot be read, or shows other bytes, the list stays as it is: a passing fault costs
 * nothing.
 * @return as zox_eventlist_load(); 1 when the list stays, with a warning
 */
ZoxErrorCode reload(ZOXEventlist *list) noexcept;

}  // namespace velkor

#endif
