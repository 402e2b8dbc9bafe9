/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The watchlist: post ids that the user marked, kept in the setting `watchlist` and saved with the
 * settings on every change. It can be stored on the server and restored from there.
 *
 * Every function but the two states asserts "core->config" and "watchlist" (no entry is null).
 * Threads: one at a time, hand-over allowed.
 */
#ifndef VELKOR_ZOX_WATCHLIST_H
#define VELKOR_ZOX_WATCHLIST_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** @return the list of ZoxString, post ids in decimal; it stays the core's */
GSList *zox_watchlist_get(void);

/**
 * @param postId  id of a posting
 * @return whether it is on the watchlist
 */
gboolean zox_watchlist_is_in_list(guint32 postId);

/**
 * Appends a posting and saves the settings.
 * @param postId  id of the posting, from 1
 * @return 1; 0 when the id is below 1 or listed already
 */
gint32 zox_watchlist_add(gint32 postId);

/**
 * Removes a posting and saves the settings.
 * @param postId  id of the posting
 * @return 1; 0 when it is not listed
 */
gint32 zox_watchlist_remove(gint32 postId);

/** Removes all postings and saves the settings. */
void zox_watchlist_clear(void);

/** @return a new text: one "Watchlist" line per entry, for the display document */
ZoxString *zox_watchlist_print(void);

/**
 * Stores the watchlist on the server; blocks. An empty one is not sent. Asserts "uitvoer".
 * @param serverText  receives the server's notice for 29, else null; untouched for an empty list
 * @return 0; 10 when the server does not answer exactly "OK"; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_watchlist_upload(char **serverText);

/**
 * Adds the postings that the server's watchlist holds; blocks. Postings that the event list does
 * not know are fetched and saved; those that the server does not know either are warned about and
 * skipped. Of more than 10,000 postings the first are taken, and the server is asked about 1,000 of
 * them at most; either bound is warned about. Nothing is removed. Asserts "uitvoer".
 * @param serverText  receives the server's notice for 29, else null
 * @return 0; a code of zox_http_curl_execute(), which leaves the watchlist as it was
 */
ZoxErrorCode zox_watchlist_download(char **serverText);

/** @return `core->watchlistUnchanged`: 0 once a posting of the watchlist was replaced */
guint32 zox_watchlist_get_state(void);

/**
 * Sets `core->watchlistUnchanged`.
 * @param state  1 when the front end has shown the changes
 */
void zox_watchlist_set_state(guint32 state);

G_END_DECLS

#endif
