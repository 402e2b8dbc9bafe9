/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The types that several modules share.
 */
#ifndef VELKOR_ZOX_TYPES_H
#define VELKOR_ZOX_TYPES_H

#include <glib.h>

#include <velkor/zox_codes.h>

G_BEGIN_DECLS

/**
 * The result of an operation that talks to the server: a value of ZoxResult; 0 is success.
 * zox_error_msg() gives the sentence for the user.
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
