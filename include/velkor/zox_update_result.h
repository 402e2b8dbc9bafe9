/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * What an update changed: an addition to the interface. A result never changes once it exists, so
 * that every thread may read it; no function here needs the core. Threads: any.
 */
#ifndef VELKOR_ZOX_UPDATE_RESULT_H
#define VELKOR_ZOX_UPDATE_RESULT_H

#include <glib.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** What one update changed; opaque and reference-counted. */
typedef struct ZoxUpdateResult ZoxUpdateResult;

/** The groups of postings that an update tells apart. A posting may be in several of them. */
typedef enum {
  ZOX_UPDATE_NEW = 0,      /**< the list did not know them; not those that came as deleted */
  ZOX_UPDATE_CHANGED = 1,  /**< the list knew them, and the server sent them again; not those that
                                came as deleted */
  ZOX_UPDATE_REMOVED = 2,  /**< they came as deleted, in state -2 or -3 */
  ZOX_UPDATE_AGED_OUT = 3, /**< they were removed because of the setting `verwijderPostsNaXDagen` */
  ZOX_UPDATE_WATCHED = 4,  /**< postings of the watchlist that were replaced, deleted ones too */
  ZOX_UPDATE_WATCHER_HIT = 5 /**< new and changed postings that a watcher matched */
} ZoxUpdateGroup;

/**
 * The ids of the postings of one group.
 * @param result  the result
 * @param group   the group
 * @param count   receives the number of ids; may be null
 * @return the ids, each once and by rising number, which stay the result's; null when there are
 * none
 */
const gint32 *zox_update_result_ids(const ZoxUpdateResult *result, ZoxUpdateGroup group,
                                    guint32 *count);

/**
 * The watcher that matched a posting of the group ZOX_UPDATE_WATCHER_HIT.
 * @param result  the result
 * @param index   the place of the posting in that group, from 0
 * @return the text of the first watcher that matched it, which stays the result's; null for an
 * index beyond the last
 */
const char *zox_update_result_watcher(const ZoxUpdateResult *result, guint32 index);

/**
 * Adds a reference.
 * @param result  the result
 * @return the same result
 */
ZoxUpdateResult *zox_update_result_ref(ZoxUpdateResult *result);

/**
 * Drops a reference; the last one releases the result.
 * @param result  the result
 */
void zox_update_result_unref(ZoxUpdateResult *result);

/**
 * What this thread's latest zox_events_fetch() changed, whatever its code: an update that fails may
 * have removed old postings before.
 * @return a new reference, which the caller drops with zox_update_result_unref(); null before the
 *         thread's first update
 */
ZoxUpdateResult *zox_events_last_result(void);

G_END_DECLS

#endif
