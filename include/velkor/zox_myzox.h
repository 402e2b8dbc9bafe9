/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * MyZOX: the user's own postings on the server. zox_myzox_fetch() fetches the overview; a front end
 * may also fetch it through zox_http_curl_execute() and hand the reply to zox_myzox_parse().
 */
#ifndef VELKOR_ZOX_MYZOX_H
#define VELKOR_ZOX_MYZOX_H

#include <libxml/tree.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * One posting of the overview, as the server states it; what the document does not hold is 0 or
 * null. zox_myzox_post_free() releases it.
 */
typedef struct _ZoxMyzoxPost {
  gint32 postId;           /**< id, from 1 */
  gint64 stamp;            /**< time of posting */
  guint32 canEdit;         /**< 1 when the user may still edit it, else 0 */
  ZoxString *title;        /**< title */
  ZoxSplittedList *groups; /**< newsgroup numbers in decimal */
  ZoxString *fName;        /**< file name */
  guint32 status;          /**< state as unsigned number, for the words see zox_string_status() */
  ZoxString *poster;       /**< name of the poster */
  ZoxString *link;         /**< web address */
  guint32 cat;             /**< main category 0 to 3 */
  guint32 sCat;            /**< sub-category */
  gint64 updated;          /**< time of the last change */
  guint32 kudos;           /**< number of kudos */
  guint32 forum;           /**< the server's "Forum" count */
  guint32 reps;            /**< the server's "Reps" count */
  guint32 reqs;            /**< the server's "Reqs" count */
  guint32 rating;          /**< rating */
  guint32 mod;             /**< the server's "Mod" value */
} ZoxMyzoxPost;

/**
 * Asks the server to refresh one of the user's postings; blocks. Asserts "uitvoer". Threads: any.
 * @param postId   id of the posting
 * @param message  on failure receives the server's notice for 29, else null; on success untouched
 * @return 0; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_myzox_update(gint32 postId, char **message);

/**
 * Addition to the interface: fetches the overview; blocks. Threads: any.
 * @param list     receives a new list of ZoxMyzoxPost, which the caller releases with
 *                 zox_myzox_free(); null when there are none and on failure
 * @param message  receives the server's notice for 29, else null; may be null
 * @return 0; 11 when the reply cannot be read; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_myzox_fetch(GSList **list, char **message);

/**
 * Addition to the interface: releases a posting of the overview. Does not need the core. Threads:
 * any, own data.
 * @param post  the posting
 */
void zox_myzox_post_free(ZoxMyzoxPost *post);

/**
 * Addition to the interface: releases an overview with its postings. Does not need the core.
 * Threads: any, own data.
 * @param list  of ZoxMyzoxPost, or null
 */
void zox_myzox_free(GSList *list);

/**
 * Reads the overview (root "MyZOX", children "Post" with an "ID" above 0). Asserts "buffer", and as
 * zox_myzox_parse_event(). Threads: any, own data.
 * @param buffer  the overview
 * @param list    receives a new list of ZoxMyzoxPost, null when there are none and on failure
 * @return 0; 1 when there is no document, 2 for another root, both with a message on standard
 *         error; 3 for an empty root
 */
gint32 zox_myzox_parse(const ZoxString *buffer, GSList **list);

/**
 * Reads one posting. An "Edit" without text asserts "tmp" (in tolerant mode the posting is passed
 * over with a warning; what was read before it is in the record). Does not need the core. Threads:
 * any, own data.
 * @param doc         the document
 * @param firstChild  the first child of the "Post", or null
 * @param post        the record to fill
 */
void zox_myzox_parse_event(xmlDocPtr doc, xmlNodePtr firstChild, ZoxMyzoxPost *post);

/**
 * Prints the overview for the display; times as local dates (see zox_string_date()). Does not need
 * the core. Threads: any, own data.
 * @param list  of ZoxMyzoxPost, or null
 * @return a new document, which the caller frees with `xmlFreeDoc()`
 */
xmlDocPtr zox_myzox_print(GSList *list);

G_END_DECLS

#endif
