/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The update: fetching what is new from the server into the event list and the cache.
 *
 * Threads: one at a time, hand-over allowed. All calls block; callbacks run on the calling thread.
 */
#ifndef VELKOR_ZOX_EVENTS_H
#define VELKOR_ZOX_EVENTS_H

#include <velkor/zox_eventlist.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Follows the downloads of an update.
 * @param total  number of dumps; 0 at the start
 * @param index  number of the dump that is downloaded next, from 1; 0 at the start
 * @return ignored
 */
typedef gint (*ZoxEventsProgress)(gint32 total, gint32 index);

/**
 * Tells that an update has changed the event list.
 * @param userData  the data given to the update
 * @return ignored
 */
typedef gint (*ZoxEventsDone)(gpointer userData);

/**
 * Asks the server what is available. New newsgroups and the member statistics of the reply are
 * taken over, see zox_events_list_parse(). Asserts "uitvoer".
 * @param dumpList      where a list of new `char *` is held, to which the names of the dumps are
 *                      appended in the server's order
 * @param lastCheck     the stamp since when, as an earlier reply gave it
 * @param newLastCheck  receives the server's new stamp when the reply holds one, else untouched
 * @param serverText    receives the server's notice for 29, a message for 11, else null; not null
 * @return 0; 11 when the reply cannot be read; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_events_fetch_get_available(GSList **dumpList, gint32 lastCheck,
                                            gint64 *newLastCheck, char **serverText);

/**
 * Brings the event list and the cache up to date: removes old postings, asks what is available
 * (again and again while dumps come, with the setting `recursiveUpdate`, unless an answer brings
 * neither a new name nor another stamp), saves the newsgroups, downloads and reads every dump,
 * merges all postings at once, saves the list, moves `lastCheck` to `prevCheck` and the server's
 * stamp to `lastCheck`, saves the settings and loads the list from the cache, which forgets the
 * filtered set. A stamp below 0 or of 2147483647 is no time: the update times then stay as they
 * were, with a warning. More than 50,000 names of dumps, 1,000 questions, or 1,000,000 postings in
 * one dump are more than any service has and end the update with 11. A failure leaves the times as
 * they were, so that the next update asks for the same again; so does a list that cannot be saved,
 * with a warning, but the merged postings then stay in memory and the result is 0. While the cache
 * file cannot be read, the update ends with 1 before it merges anything. After a result
 * of 0, zox_file_last_error() tells whether everything was saved: ZOX_FILE_NOT_WRITTEN or
 * ZOX_FILE_READ_ONLY with the file of the postings or of the settings when not. Asserts
 * "core->config" and "uitvoer".
 * @param progress       called with (0, 0) at the start and before each download; may be null
 * @param mergeProgress  handed to zox_eventlist_merge(); may be null
 * @param done           called twice, after the merge and at the end, on success only; may be null
 * @param serverText     receives the server's notice for 29 or a message for 11; not null
 * @param userData       handed to `mergeProgress` and `done`
 * @return 0; 5 when nothing is new; 1 when a dump is not valid gzip; 11 when a reply or dump cannot
 *         be read; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_events_fetch(ZoxEventsProgress progress, ZoxEventlistProgress mergeProgress,
                              ZoxEventsDone done, char **serverText, gpointer userData);

G_END_DECLS

#endif
