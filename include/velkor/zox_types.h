/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The types that several modules share.
 */
#ifndef VELKOR_ZOX_TYPES_H
#define VELKOR_ZOX_TYPES_H

#include <glib.h>

G_BEGIN_DECLS

/**
 * The result of an operation that talks to the server; 0 is success. zox_error_msg() gives the
 * sentence for the user. Codes marked * have none.
 *
 * - 0: success
 * - 1: the transfer failed for another reason or was stopped, its temporary file could not be made,
 *   or a dump is not valid gzip
 * - 2: user name or password refused
 * - 3: banned from the server
 * - 4: the server's database fails
 * - 5: an update found nothing new
 * - 6: the platform cannot load modules
 * - 7: reserved, never returned
 * - 8: the authentication plug-in cannot be opened
 * - 9: the authentication plug-in lacks its entry point
 * - 10: a reply that the operation does not recognise
 * - 11: a reply, or the cache, that cannot be read
 * - 12: the posting whose forum is asked for is not in the event list
 * - 13: an empty reply where data was required
 * - 14: the host name cannot be resolved
 * - 15: the proxy's name cannot be resolved
 * - 16: no connection
 * - 17: error while receiving
 * - 18: error while sending
 * - 19: time-out
 * - 20*: sign-up refused with "E0"
 * - 21: sign-up refused: the user name is taken
 * - 22: sign-up refused: the address is banned
 * - 23: sign-up refused: another account was used from this address within 48 hours
 * - 24*: the transfer handle cannot be created
 * - 25*: a new spot was refused
 * - 26*: a new spot was accepted with a reservation
 * - 27: the server wants a newer client
 * - 28: for the front end, never returned: an update ran in the last 10 minutes
 * - 29: the server sent a notice; the operation's message holds it
 * - 30: the posting is gone from the server
 * - 31*: this warning about a posting was given before
 * - 32*: this warning about a reaction was given before
 * - 33*: a request for a profile produced none
 * - 0xFFFFFFFF* (-1): the addressee of a private message is unknown
 */
typedef guint32 ZoxErrorCode;

/**
 * A growable text: a GLib `GString`, released with `g_string_free(text, TRUE)`. Null means "no
 * value" and differs from an empty text.
 */
typedef GString ZoxString;

/**
 * Converts a text for the display, for example to HTML.
 * @param text  the text to convert; it stays the library's
 * @return a new text, which the library releases; never null
 */
typedef ZoxString *(*ZoxTextFunc)(ZoxString *text);

/** The user's saved filters; see zox_filterlist.h. */
typedef struct _ZOXFilterlist ZOXFilterlist;
/** All known postings by post id; see zox_eventlist.h. */
typedef struct _ZOXEventlist ZOXEventlist;
/** The forum of one posting; see zox_events_forum.h. */
typedef struct _ZoxForum ZoxForum;
/** Which postings to show and how; see zox_filter.h. */
typedef struct _ZoxFilter ZoxFilter;

G_END_DECLS

#endif
