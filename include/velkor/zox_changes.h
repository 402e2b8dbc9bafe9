/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Being told of changes: an addition to the interface. Whoever shows what the library keeps learns
 * here when it is no longer what is shown, whichever thread and function changed it. Changes of the
 * same kind (and posting) that come faster than the context runs are told once. Changes of the
 * fields of a record that a program makes itself are not noticed. Does not need the core. Threads:
 * any.
 */
#ifndef VELKOR_ZOX_CHANGES_H
#define VELKOR_ZOX_CHANGES_H

#include <glib.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** What changed; the values are added up where several are meant. */
typedef enum {
  ZOX_CHANGE_LIST = 1,     /**< postings came into the event list or left it: a merge, a load, a
                                removal */
  ZOX_CHANGE_POSTING = 2,  /**< one posting of the event list was added or replaced, mostly by its
                                details or its forum */
  ZOX_CHANGE_SETTINGS = 4, /**< the settings were loaded or saved, the watchlist among them */
  ZOX_CHANGE_MAIL = 8,     /**< the list of messages was loaded or saved */
  ZOX_CHANGE_CACHE = 16,   /**< zox_changes_cache_status() has another value */
  ZOX_CHANGE_ALL = 31      /**< all of these */
} ZoxChange;

/**
 * Told of a change, on the context of the subscription and after the change.
 * @param change    what changed: one value of ZoxChange
 * @param postId    the posting of ZOX_CHANGE_POSTING; else 0
 * @param userData  the data given with the subscription
 */
typedef void (*ZoxChangeFunc)(ZoxChange change, gint32 postId, gpointer userData);

/**
 * Has a function told of changes from now on.
 * @param changes   of what: a sum of ZoxChange
 * @param context   where the function is called; null for the default context. The subscription
 *                  holds a reference
 * @param function  the function
 * @param userData  handed to the function
 * @param destroy   releases `userData` when the subscription has ended, on the context; may be null
 * @return the number of the subscription, from 1
 */
guint32 zox_changes_subscribe(guint32 changes, GMainContext *context, ZoxChangeFunc function,
                              gpointer userData, GDestroyNotify destroy);

/**
 * Ends a subscription. When the thread that runs its context calls this, the function is not called
 * again; another thread may see one more call that has begun.
 * @param subscription  the number of the subscription
 * @return whether there was one
 */
gboolean zox_changes_unsubscribe(guint32 subscription);

/**
 * The health of the cache file of the postings: how its latest saving or loading ended, on
 * whichever thread.
 * @return ZOX_FILE_FINE, also before the first; else what is wrong
 */
ZoxFileStatus zox_changes_cache_status(void);

G_END_DECLS

#endif
