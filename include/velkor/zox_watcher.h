/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Watchers: saved search texts of the setting `watcher`. A watcher matches a posting whose title
 * holds its text, regardless of the case of a to z, and whose main category has a user's filter.
 *
 * Threads: one at a time, hand-over allowed.
 */
#ifndef VELKOR_ZOX_WATCHER_H
#define VELKOR_ZOX_WATCHER_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Called for one posting that a watcher matches, while the event list is locked for reading.
 * @param event     a copy of the posting, released after the call
 * @param text      the watcher's text
 * @param userData  the data given to zox_watcher_foreach()
 * @return ignored
 */
typedef gint (*ZoxWatcherFunc)(ZoxEvent *event, const char *text, gpointer userData);

/**
 * Asserts "core->config".
 * @param event  the posting
 * @return whether any watcher matches it
 */
gboolean zox_watcher_test_event(const ZoxEvent *event);

/**
 * Calls a function with every posting that a text matches. The event list's filter and filtered set
 * are replaced: apply the view's filter again afterwards.
 * @param text      the search text
 * @param func      the function; it must not change the event list
 * @param userData  handed to `func`
 */
void zox_watcher_foreach(const char *text, ZoxWatcherFunc func, gpointer userData);

/** @return `core->watcherNoHits`: 0 once a merged posting matched a watcher */
guint32 zox_watcher_get_state(void);

/**
 * Sets `core->watcherNoHits`.
 * @param state  1 when the front end has shown the hits
 */
void zox_watcher_set_state(guint32 state);

G_END_DECLS

#endif
