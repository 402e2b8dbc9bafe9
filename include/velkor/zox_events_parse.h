/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The readers of the Events document: postings (dumps and the cache), and what an update may fetch.
 *
 * libxml2's messages are collected per thread; the readers install their handler for them.
 */
#ifndef VELKOR_ZOX_EVENTS_PARSE_H
#define VELKOR_ZOX_EVENTS_PARSE_H

#include <libxml/tree.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Reads a document of postings: root "Events", children "Event" (letter case does not count). The
 * category counters count every posting that is new since `prevCheck`; a posting whose title holds
 * a configured bad word is dropped unless its state is deleted (-2, -3). Asserts "buffer",
 * "badword" (no bad word is null), "*ret_tree", and "tmp" for a "Groups" or "Tags" without text
 * (see zox_set_tolerant()). Exactly one of `retTree` and `retList` is given; anything else is
 * logged at GLib's error level, which ends the process. Threads: one at a time, hand-over allowed.
 * @param buffer    the document
 * @param retTree   where an existing hash table of ZOXEventObject by post id is held, to which the
 *                  postings are added; the caller holds its lock. A posting without "PostID" gets
 *                  the key -1. Or null
 * @param retList   where a list of ZOXEventObject is held, to whose front the postings are put one
 *                  by one (reverse order of the document). Or null
 * @param retError  receives null or a message; may be null
 * @param quiet     0 to print an unusable document on standard output
 * @return 0; 11 when the document is not well-formed, has another root or an empty one, more than
 *         10,000 different names or, for a list, more than 1,000,000 postings
 */
ZoxErrorCode zox_events_parse(const ZoxString *buffer, GHashTable **retTree, GSList **retList,
                              char **retError, gint32 quiet);

/**
 * Reads one posting. Element names are exact; unknown elements are skipped, a later element
 * replaces an earlier one. Without a sub-category the first tag that begins with "a" gives it.
 * Asserts "tmp" for a "Groups" or "Tags" without text. Threads: any, own data.
 * @param doc         the document
 * @param firstChild  the first of the sibling elements, or null
 * @return a new record, which the caller releases with zox_event_free(); in tolerant mode null for
 *         a posting that is passed over
 */
ZoxEvent *zox_events_parse_event(xmlDocPtr doc, xmlNodePtr firstChild);

/**
 * Reads the "Track" elements among siblings. Threads: any, own data.
 * @param doc         the document
 * @param firstChild  the first of the siblings, or null
 * @return a new list of new ZoxString in the order of the document; null for none
 */
GSList *zox_events_parse_mp3_tracks(xmlDocPtr doc, xmlNodePtr firstChild);

/**
 * Reads the server's reply about what is available: its stamp, newsgroups that are not yet known
 * (appended to `core->groups`), member statistics (into `core->config`) and the names of the dumps.
 * The root must be named exactly "Events". A reply of more than 50,000 names of dumps, a million
 * elements or 10,000 different names of elements is unusable. Asserts "buffer". Threads: one
 * at a time, hand-over allowed.
 * @param buffer     the reply
 * @param retStamp   receives the server's stamp when the reply holds one, else untouched; may be
 *                   null
 * @param retChunks  where a list of new `char *` is held, to which the names are appended; empty
 *                   names are kept
 * @param retError   receives null or a message; not null
 * @return 0; 11 when the reply is unusable or holds a record of unknown code or a newsgroup without
 *         id or name. What earlier records did stays done
 */
ZoxErrorCode zox_events_list_parse(const ZoxString *buffer, gint64 *retStamp, GSList **retChunks,
                                   char **retError);

G_END_DECLS

#endif
