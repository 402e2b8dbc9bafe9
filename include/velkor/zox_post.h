/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Posting a new spot. Requests block. Threads: any, own data.
 */
#ifndef VELKOR_ZOX_POST_H
#define VELKOR_ZOX_POST_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Follows the posting of a spot, on the calling thread.
 * @param step  1 start; 2 before and 3 after the posting's request, 4 accepted; 5 before and 6
 *              after the description's, 7 succeeded; 8, 9, 10 likewise for the signature; 11, 12,
 *              13 for the tracks; 14 finished with 26, 15 finished with 0, 16 failed
 * @return ignored
 */
typedef gint (*ZoxPostProgress)(gint32 step);

/**
 * Sends a posting, then its description, signature and tracks where it has them. When one of these
 * fails, the posting stays on the server without the rest. The server's notice of code 29 is not
 * handed over. Asserts "event".
 * @param event     the posting, with a title; its `postId` becomes the server's once it is
 *                  accepted, and with tracks `fStart` becomes 1 and `files` the number of tracks
 * @param progress  called at each step; may be null
 * @return 0; 26 when it is accepted with a reservation; 25 when it is refused; 11 when the reply is
 *         not understood; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_post_send(ZoxEvent *event, ZoxPostProgress progress);

G_END_DECLS

#endif
