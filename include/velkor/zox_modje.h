/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Warnings to the moderators. Requests block. Threads: any.
 */
#ifndef VELKOR_ZOX_MODJE_H
#define VELKOR_ZOX_MODJE_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Warns the moderators about a posting or a reaction. Asserts "post_id > 0" and "uitvoer".
 * @param postId   id of the posting, from 1
 * @param forumId  id of the reaction in its forum; 0 for the posting itself
 * @param reason   what is wrong
 * @param number   receives the number behind the server's "OK" (0 without one); may be null
 * @param message  on failure of the request receives the server's notice for 29, else null
 * @return 0; 4 when the server answers "FAIL"; 31 when this warning was given before about the
 *         posting, 32 about the reaction; 10 when the reply is not understood; a code of
 *         zox_http_curl_execute()
 */
ZoxErrorCode zox_modje_send(gint32 postId, gint32 forumId, const char *reason, gint32 *number,
                            char **message);

G_END_DECLS

#endif
