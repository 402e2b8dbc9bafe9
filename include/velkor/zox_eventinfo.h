/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The details of one posting: texts, file information, image and tracks, merged into the cache.
 *
 * At most nine digits of a post id are sent.
 */
#ifndef VELKOR_ZOX_EVENTINFO_H
#define VELKOR_ZOX_EVENTINFO_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Receives the result of zox_eventinfo_fetch_async(), exactly once.
 * @param result    as zox_eventinfo_fetch() returns it
 * @param postId    the posting asked for
 * @param message   the server's notice for 29; the reason when no thread could be made (result 1);
 *                  else null. The callback's to free
 * @param userData  the data given with the callback
 * @return ignored
 */
typedef gint (*ZoxEventinfoCallback)(ZoxErrorCode result, gint32 postId, char *message,
                                     gpointer userData);

/**
 * Asks the server for the basic fields of a posting; blocks. A reply that cannot be read is printed
 * on standard output. Asserts "uitvoer". Threads: any.
 * @param postId  id of the posting
 * @return a new record, which the caller releases with zox_event_free(); null when the request or
 *         the reading failed
 */
ZoxEvent *zox_eventinfo_findpost(gint32 postId);

/**
 * Fetches the details of a posting into the event list and saves the list; blocks. A posting that
 * the list does not know is asked for by zox_eventinfo_findpost() first. On failure nothing
 * changes. Asserts "uitvoer". Threads: any.
 * @param postId   id of the posting
 * @param message  receives the server's notice for 29 and null when the request failed otherwise;
 *                 else untouched
 * @return 0; 30 when neither cache nor server knows the posting; 11 (with a warning) when the reply
 *         cannot be read; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_eventinfo_fetch(gint32 postId, char **message);

/**
 * Runs zox_eventinfo_fetch() on a thread of its own. Several may run at once; their callbacks come
 * in any order. When the process exits, the fetches end first, without a callback. Asserts "cb".
 * Threads: any.
 * @param postId    id of the posting
 * @param callback  called by the default main loop; without a thread before this function returns,
 *                  with result 1
 * @param userData  handed to the callback
 */
void zox_eventinfo_fetch_async(gint32 postId, ZoxEventinfoCallback callback, gpointer userData);

/**
 * Reads the reply about a posting's basic fields (root "Post") and counts the posting in its
 * categories. Asserts "buffer" and "core->categories". Threads: any.
 * @param buffer  the reply
 * @return a new record, which the caller releases; null, with a warning, for an unusable reply
 */
ZoxEvent *zox_eventinfo_parse_findpost(const ZoxString *buffer);

/**
 * Reads the reply about a posting's details (root "PostInfo" with "Post" and then "MP3"). Does not
 * need the core. Asserts "tekst" (`text`). Threads: any, own data.
 * @param text  the reply
 * @return a new record, which the caller releases; null, with a message on standard error or a
 *         warning, for an unusable reply
 */
ZoxEvent *zox_eventinfo_parse(const ZoxString *text);

G_END_DECLS

#endif
