/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The forum of a posting: the users' reactions and the posting's live values.
 */
#ifndef VELKOR_ZOX_EVENTS_FORUM_H
#define VELKOR_ZOX_EVENTS_FORUM_H

#include <libxml/tree.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** The forum of one posting. */
struct _ZoxForum {
  GSList *reactions; /**< null; of ZoxReactie, owned, in the server's order */
  gint64 stamp;      /**< 0; time of the forum, as the server states it */
};

/** One reaction; it owns its texts. A new one is zero-filled. */
typedef struct _ZoxReactie {
  guint32 messId;    /**< id of the reaction */
  ZoxString *author; /**< user name of the author; null when the server gave none */
  ZoxString *body;   /**< the text; null when the server gave none */
  gint64 stamp;      /**< time of writing, as the server states it */
  gint64 edit;       /**< time of the last edit; 0 or less for none */
  guint32 kudos;     /**< kudos of the author */
  guint32 reply;     /**< id of the reaction that this one answers; 0 for none */
  ZoxString *avatar; /**< the author's avatar; null when the server gave none */
} ZoxReactie;

/**
 * Receives the result of zox_events_forum_fetch_async(), exactly once.
 * @param result     as zox_events_forum_fetch() returns it
 * @param postId     the posting asked for
 * @param lastCheck  the time asked for
 * @param message    the server's notice for 29; the reason when no thread could be made (result 1);
 *                   else null. The callback's to free
 * @param userData   the data given with the callback
 * @return ignored
 */
typedef gint (*ZoxForumCallback)(ZoxErrorCode result, gint32 postId, gint32 lastCheck,
                                 char *message, gpointer userData);

/**
 * Does not need the core. Threads: any.
 * @return a new empty forum
 */
ZoxForum *zox_events_forum_new(void);

/**
 * Releases a forum with its reactions. Does not need the core. Asserts "forum". Threads: any, own
 * data.
 * @param forum  the forum
 */
void zox_events_forum_free(ZoxForum *forum);

/**
 * Does not need the core. Threads: any.
 * @return a new reaction, zero-filled
 */
ZoxReactie *zox_events_forum_reactie_new(void);

/**
 * Releases a reaction. Does not need the core. Threads: any, own data.
 * @param reactie  the reaction
 */
void zox_events_forum_reactie_free(ZoxReactie *reactie);

/**
 * Fetches the forum of a posting into the event list, whose cache file is not written; blocks. On
 * failure the posting stays as it was. Asserts "uitvoer". Threads: any.
 * @param postId     id of the posting
 * @param lastCheck  time of the last check, sent as it is
 * @param message    receives the server's notice for 29, else null
 * @return 0; 12 when the event list does not know the posting; 11 when the reply cannot be read; a
 *         code of zox_http_curl_execute()
 */
ZoxErrorCode zox_events_forum_fetch(gint32 postId, gint32 lastCheck, char **message);

/**
 * Runs zox_events_forum_fetch() on a thread of its own. Several may run at once; their callbacks
 * come in any order. When the process exits, the fetches end first, without a callback. Asserts
 * "cb". Threads: any.
 * @param postId     id of the posting
 * @param lastCheck  as for zox_events_forum_fetch()
 * @param callback   called by the default main loop; without a thread before this function returns,
 *                   with result 1
 * @param userData   handed to the callback
 */
void zox_events_forum_fetch_async(gint32 postId, gint32 lastCheck, ZoxForumCallback callback,
                                  gpointer userData);

/**
 * Sends a reaction; blocks. Line feeds go out as "\r\n". Asserts "uitvoer". Threads: any.
 * @param text     the reaction
 * @param postId   id of the posting
 * @param unused   has no meaning
 * @param message  receives the server's notice for 29, else null
 * @return 0; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_events_forum_post(const char *text, gint32 postId, gint32 unused, char **message);

/**
 * Addition to the interface: zox_events_forum_post() that tells what the server answered and can
 * reply to a reaction; blocks. Threads: any.
 * @param postId   id of the posting
 * @param replyTo  id of the reaction that this one answers; 0 for none, which is not sent
 * @param text     the reaction
 * @param answer   receives ZOX_ANSWER_DONE, ZOX_ANSWER_LOCKED, ZOX_ANSWER_NOT_FOUND,
 *                 ZOX_ANSWER_REFUSED or ZOX_ANSWER_UNKNOWN; ZOX_ANSWER_NONE on failure
 * @param messId   receives the id of the new reaction; 0 when the server does not tell it; may be
 *                 null
 * @param message  receives the server's notice for 29, else null; may be null
 * @return as of zox_events_forum_post(): 0 for every answer
 */
ZoxErrorCode zox_events_forum_react(gint32 postId, gint32 replyTo, const char *text,
                                    ZoxAnswer *answer, guint32 *messId, char **message);

/**
 * Reads a forum reply (root "Forum") into a posting, which gets a new forum, also when the reply is
 * unusable. An "Event" without "Code" is passed over with a warning. Asserts "buffer". Threads:
 * any, own data.
 * @param buffer  the reply
 * @param event   the posting
 * @return 0; 1 when there is no document, 2 for another root, 3 for an empty root, each with a
 *         message on standard error or a warning
 */
gint32 zox_events_forum_parse(const ZoxString *buffer, ZoxEvent *event);

/**
 * Reads one reaction and appends it to the posting's forum. Threads: any, own data.
 * @param doc            the document
 * @param firstChild     the first child of the "Event", or null
 * @param event          the posting; its forum is not null
 * @param dropWithdrawn  non-zero to drop a reaction whose time of edit is negative
 */
void zox_events_forum_parse_forum(xmlDocPtr doc, xmlNodePtr firstChild, ZoxEvent *event,
                                  gint32 dropWithdrawn);

/**
 * Reads the posting's live values and the forum's time. Threads: any, own data.
 * @param doc         the document
 * @param firstChild  the first child of the "Event", or null
 * @param event       the posting; its forum is not null
 */
void zox_events_forum_parse_data(xmlDocPtr doc, xmlNodePtr firstChild, ZoxEvent *event);

/**
 * Reads one user's kudos and sets them in that author's reactions so far. Threads: any, own data.
 * @param doc         the document
 * @param firstChild  the first child of the "Event", or null
 * @param event       the posting; its forum is not null
 */
void zox_events_forum_parse_kudos(xmlDocPtr doc, xmlNodePtr firstChild, ZoxEvent *event);

/**
 * Prints a forum for the display document: one "Reactie" per reaction, then "NumReacties". Texts
 * stand in CDATA sections as they are. Does not need the core. Asserts "event" and "event->forum".
 * Threads: any, own data.
 * @param event     the posting
 * @param textFunc  converts the body of each reaction; may be null
 * @return a new text
 */
ZoxString *zox_events_forum_print(const ZoxEvent *event, ZoxTextFunc textFunc);

/**
 * Does not need the core. Asserts "reactie". Threads: any, own data.
 * @param reactie  the reaction
 * @return the larger of the lengths of author and body in bytes
 */
guint32 zox_events_forum_get_highest_length(const ZoxReactie *reactie);

G_END_DECLS

#endif
