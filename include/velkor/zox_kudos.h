/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Kudos: the users' thanks for a posting. Requests block. Threads: any.
 */
#ifndef VELKOR_ZOX_KUDOS_H
#define VELKOR_ZOX_KUDOS_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Gives kudos to a posting. Asserts "uitvoer".
 * @param postId   id of the posting
 * @param kudos    the value, sent as it is
 * @param message  on failure receives the server's notice for 29, else null
 * @return 0; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_kudos_give(gint32 postId, gint32 kudos, char **message);

/**
 * Asks for the two counts of a posting; their meaning is the server's. Asserts "uitvoer".
 * @param postId   id of the posting
 * @param first    receives the count before the "*" of the reply
 * @param second   receives the count behind it
 * @param message  on failure receives the server's notice for 29, else null
 * @return 0; 11 when the reply holds no "*"; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_kudos_get(gint32 postId, gint32 *first, gint32 *second, char **message);

/**
 * Addition to the interface: zox_kudos_give() that tells what the server answered.
 * @param postId   id of the posting
 * @param kudos    the value, sent as it is
 * @param answer   receives ZOX_ANSWER_DONE, ZOX_ANSWER_DUPLICATE, ZOX_ANSWER_REFUSED or
 *                 ZOX_ANSWER_UNKNOWN; ZOX_ANSWER_NONE on failure
 * @param message  receives the server's notice for 29, else null; may be null
 * @return as of zox_kudos_give(): 0 for every answer
 */
ZoxErrorCode zox_kudos_give_answered(gint32 postId, gint32 kudos, ZoxAnswer *answer,
                                     char **message);

G_END_DECLS

#endif
