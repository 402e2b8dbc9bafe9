/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The event list: all known postings by post id, the set that the last filter accepts, and the
 * gzip-compressed cache file "velkor.posts.gz".
 *
 * Whatever leaves the list is a copy. The list's lock is taken before a posting's own lock, never
 * the other way round; callbacks run while it is held and must not change the list.
 */
#ifndef VELKOR_ZOX_EVENTLIST_H
#define VELKOR_ZOX_EVENTLIST_H

#include <glib-object.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** The event list; GObject type "ZOXEventlist". Its fields are the library's business. */
/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
struct _ZOXEventlist {
  GObject parent;          /**< the reference count */
  GStaticRWLock lock;      /**< guards the fields below */
  GHashTable *tree;        /**< GINT_TO_POINTER(postId) to ZOXEventObject, one reference each */
  GHashTable *filtered;    /**< likewise without references: what `activeFilter` accepts; null until
                                a filter is applied and after a load */
  ZoxFilter *activeFilter; /**< the filter applied last, owned; null until then */
};
G_GNUC_END_IGNORE_DEPRECATIONS

/**
 * Called for one posting of a walk.
 * @param key       GINT_TO_POINTER(postId)
 * @param event     a copy of the posting, released after the call
 * @param userData  the data given to the walk
 * @return ignored
 */
typedef gint (*ZoxEventlistFunc)(gpointer key, ZoxEvent *event, gpointer userData);

/**
 * Called for one posting of a visit.
 * @param event     the posting itself, locked: it is valid until the function returns and must not
 *                  be changed
 * @param userData  the data given to the visit
 */
typedef void (*ZoxEventlistVisitor)(const ZoxEvent *event, gpointer userData);

/**
 * Follows a merge.
 * @param total     number of postings to merge
 * @param done      number merged so far
 * @param userData  the data given to the merge
 * @return ignored
 */
typedef gint (*ZoxEventlistProgress)(guint32 total, guint32 done, gpointer userData);

/**
 * Registers the type on its first call. Threads: any.
 * @return the type "ZOXEventlist"
 */
GType zox_eventlist_get_type(void);

/**
 * Threads: any.
 * @return a new empty list with one reference
 */
ZOXEventlist *zox_eventlist_new(void);

/**
 * Drops one reference; the last one releases all postings. Threads: any.
 * @param list  the list
 */
void zox_eventlist_destroy(ZOXEventlist *list);

/**
 * Replaces the postings by those of the cache file and forgets the filtered set, not the filter.
 * New postings are counted in their categories. Meanwhile other threads may use the list, which
 * holds the earlier postings until all are read; what they add, replace or remove stays so.
 * Threads: one at a time, hand-over allowed.
 * @param list      the list
 * @param retError  receives null or a message; may be null
 * @return 0; 11 when the file is missing, empty or broken, 1 when it cannot be read at all; the
 *         list is then empty. The next save makes a backup of a broken file, under a name that ends
 *         in ".onleesbaar-" and the time
 */
ZoxErrorCode zox_eventlist_load(ZOXEventlist *list, char **retError);

/**
 * Writes all postings to the cache file, except those in state -2 that changed more than a day ago
 * and, with a warning, those that zox_events_xml_add_basic() cannot write. Sections of the file
 * whose postings have not changed are copied, and a file that is just what would be written stays
 * as it is. Several threads may save the same list: one waits for the other, so that the last one
 * stands. Threads: any, but not from a callback that runs while the list is locked.
 * @param list  the list
 * @return 1; 0 when the file cannot be written
 */
gint32 zox_eventlist_save(ZOXEventlist *list);

/**
 * Adds postings, replacing those with the same post id. Marks watcher hits and replaced postings of
 * the watchlist in the posting (`watcherHit`, `watchlistUpdated`) and in the core (`watcherNoHits`,
 * `watchlistUnchanged` become 0). Threads: one at a time, hand-over allowed.
 * @param list      the list
 * @param objects   of ZOXEventObject; their references pass to the list, the cells stay the
 *                  caller's
 * @param progress  called for every tenth posting and at the end with (total, total); may be null
 * @param userData  handed to `progress`
 */
void zox_eventlist_merge(ZOXEventlist *list, GSList *objects, ZoxEventlistProgress progress,
                         gpointer userData);

/**
 * Adds one posting or replaces the one with its post id; if that one is on the watchlist,
 * `core->watchlistUnchanged` becomes 0. Threads: any.
 * @param list   the list
 * @param event  the posting, copied
 */
void zox_eventlist_add_or_replace_event(ZOXEventlist *list, const ZoxEvent *event);

/**
 * Threads: any.
 * @param list    the list
 * @param postId  id of the posting
 * @return a copy of the posting, which the caller releases with zox_event_free(); null if unknown
 */
ZoxEvent *zox_eventlist_lookup_id(ZOXEventlist *list, gint32 postId);

/**
 * Threads: any.
 * @param list      the list
 * @param filtered  non-zero to count the filtered set, 0 to count all
 * @return the number of postings; 0 for the filtered set before a filter was applied
 */
guint32 zox_eventlist_get_count(ZOXEventlist *list, gint32 filtered);

/**
 * Threads: any.
 * @param list  the list
 * @return a copy of the filter applied last, which the caller releases with
 *         zox_filter_free_filter(); null before any filter was applied
 */
ZoxFilter *zox_eventlist_get_filter(ZOXEventlist *list);

/**
 * Threads: any.
 * @param list  the list
 * @return a copy of one posting of the filtered set (the last in the table's order), which the
 *         caller releases with zox_event_free(); null when the set is empty
 */
ZoxEvent *zox_eventlist_get_first_filtered_event(ZOXEventlist *list);

/**
 * Makes the filtered set anew. A filter with a post id accepts that posting alone, and if it is
 * unknown it is fetched from the server, which blocks, lets others use the list meanwhile and saves
 * the list. The newsgroup condition uses the list of the filter given. Asserts "groupIds == NULL"
 * when a newsgroup set is active (see zox_groups.h). Threads: one at a time, hand-over allowed.
 * @param list    the list
 * @param filter  the filter, copied as zox_filter_duplicate() copies
 */
void zox_eventlist_apply_filter(ZOXEventlist *list, const ZoxFilter *filter);

/**
 * Calls a function with a copy of every posting, in the table's order. Threads: any.
 * @param list      the list
 * @param filtered  non-zero for the filtered set, 0 for all
 * @param readOnly  non-zero to hold the lock for reading during the walk, 0 for writing
 * @param func      the function; it must not change the list
 * @param userData  handed to `func`
 */
void zox_eventlist_foreach(ZOXEventlist *list, gint32 filtered, gint32 readOnly,
                           ZoxEventlistFunc func, gpointer userData);

/**
 * Walks over postings as zox_eventlist_foreach() does for reading, but without copying them: for
 * looking at a few fields of many postings. The list cannot change meanwhile. Threads: any; the
 * visitor must not call into the list.
 * @param list      the list
 * @param filtered  non-zero to walk over the filtered set, 0 over all
 * @param visitor   called for each posting, in no particular order
 * @param userData  handed to `visitor`
 */
void zox_eventlist_visit(ZOXEventlist *list, gint32 filtered, ZoxEventlistVisitor visitor,
                         gpointer userData);

/**
 * Addition to the interface: walks over the postings that a filter accepts as zox_eventlist_visit()
 * does, without touching the filtered set, the active filter or the newsgroup set. The newsgroup
 * condition uses the list of the filter given, and a filter with a post id accepts that posting
 * alone. Nothing is fetched. Threads: any; the categories must not change meanwhile; the visitor
 * must not call into the list.
 * @param list      the list
 * @param filter    the filter; null for all postings
 * @param visitor   called for each posting, in no particular order
 * @param userData  handed to `visitor`
 */
void zox_eventlist_visit_matches(ZOXEventlist *list, const ZoxFilter *filter,
                                 ZoxEventlistVisitor visitor, gpointer userData);

/**
 * Addition to the interface: the postings that a filter accepts, as zox_eventlist_visit_matches()
 * finds them. Threads: any; the categories must not change meanwhile.
 * @param list    the list
 * @param filter  the filter; null for all postings
 * @param count   receives their number
 * @return a new array of their ids by rising number, which the caller releases with `g_free()`;
 * null when there are none
 */
gint32 *zox_eventlist_select(ZOXEventlist *list, const ZoxFilter *filter, guint32 *count);

/**
 * Addition to the interface: counts what several filters accept, in one pass over the list.
 * Conditions are tested as zox_eventlist_visit_matches() does. Threads: any; the categories must
 * not change meanwhile.
 * @param list     the list
 * @param filter   what is counted at all; null for all postings
 * @param filters  of ZoxFilter: what is counted apart; null for none
 * @param counts   receives for each of `filters`, in their order, how many postings both it and
 *                 `filter` accept; it has room for as many numbers
 * @return how many postings `filter` accepts
 */
guint32 zox_eventlist_count_matches(ZOXEventlist *list, const ZoxFilter *filter,
                                    const GSList *filters, guint32 *counts);

/**
 * Addition to the interface: counts the postings of every category, in one pass over the list. The
 * counters of the categories stay as they are. Asserts "core->categories". Threads: one at a time,
 * hand-over allowed.
 * @param list    the list
 * @param filter  what is counted at all; null for all postings
 * @param counts  receives for each entry of zox_categories_get(), in its order, how many postings
 *                both the entry's filter and `filter` accept; it has room for as many numbers
 * @return how many postings `filter` accepts
 */
guint32 zox_eventlist_count_categories(ZOXEventlist *list, const ZoxFilter *filter,
                                       guint32 *counts);

/**
 * Removes postings in state -3, and those in state -2 that changed more than a day ago (local
 * clock), from the list and from the watchlist (which saves the settings). The filtered set is not
 * made anew: apply a filter before using it again. Threads: one at a time, hand-over allowed.
 * @param list  the list
 */
void zox_eventlist_purge_deleted(ZOXEventlist *list);

/**
 * Removes postings that are older than the setting `verwijderPostsNaXDagen` allows (local clock),
 * except those on the watchlist. If any posting was that old, the list is saved and, once that has
 * succeeded, loaded again, which forgets the filtered set. An invalid setting only gives a warning.
 * Asserts "core->config". Threads: one at a time, hand-over allowed.
 * @param list  the list
 */
void zox_eventlist_cleanup(ZOXEventlist *list);

G_END_DECLS

#endif
