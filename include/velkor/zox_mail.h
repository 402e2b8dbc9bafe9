/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Private mail: messages waiting on the server, and all received and sent ones in `core->mail` and
 * the plain file "velkor.mail" in the cache directory, which mirrors it.
 *
 * Threads: one at a time, hand-over allowed, unless a function says otherwise. Requests block.
 */
#ifndef VELKOR_ZOX_MAIL_H
#define VELKOR_ZOX_MAIL_H

#include <libxml/tree.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** One message; it owns its texts, none of which is null. */
typedef struct _ZoxBericht {
  ZoxString *from;    /**< the other party: sender of a received message, addressee of a sent one */
  ZoxString *subject; /**< subject; may be empty */
  ZoxString *body;    /**< text; may be empty */
  gint64 stamp;       /**< time of a received message as the server states it, of a sent one by the
                           local clock */
  guint32 code;       /**< 1 received, 2 sent, 0 neither sent nor stored yet */
} ZoxBericht;

/**
 * Asks whether messages wait. Asserts "mailWaiting" and "uitvoer". Threads: any.
 * @param mailWaiting  receives 1 or 0 on success
 * @param message      on failure receives the server's notice for 29, else null
 * @return 0; 10 when the reply begins with neither "Y" nor "N"; a code of zox_http_curl_execute()
 */
ZoxErrorCode zox_mail_check(guint32 *mailWaiting, char **message);

/**
 * Fetches the waiting messages, appends them, saves the file and, once that has succeeded, loads it
 * again, so that pointers to messages become invalid. On failure nothing changes. What cannot be
 * read of the reply costs no other message: the rest is taken, and the server's copy being gone,
 * the reply is kept beside the mail file under a name that ends in ".antwoord-" and the time, with
 * a warning that names it. Asserts "numNewMail" and "uitvoer", and as zox_mail_parse_bericht().
 * @param numNewMail  receives the number of new messages on success
 * @param message     on failure receives the server's notice for 29, else null
 * @return 0; 11 when the reply cannot be read or holds no message; a code of
 *         zox_http_curl_execute()
 */
ZoxErrorCode zox_mail_fetch(guint32 *numNewMail, char **message);

/**
 * Sends a message. On success its body's line ends become "\r\n<BR />", it gets the local time and
 * the code 2, the list takes it and the file is saved; on failure it stays the caller's, unchanged.
 * Asserts "bericht" and "uitvoer".
 * @param bericht  the message; `from` holds the addressee
 * @param message  on failure receives the server's notice for 29, else null
 * @return 0; 0xFFFFFFFF when the addressee is unknown; 10 when the reply is not understood; a code
 *         of zox_http_curl_execute()
 */
ZoxErrorCode zox_mail_post(ZoxBericht *bericht, char **message);

/**
 * Takes a message out of the list, saves the file and releases the message; the server does not
 * learn of it. When the file cannot be saved, the message stays where it was. Asserts "core->mail".
 * @param bericht  a message of `core->mail`
 * @return as zox_mail_save()
 */
gint32 zox_mail_delete(ZoxBericht *bericht);

/**
 * Addition to the interface: zox_mail_delete() for several messages, with one save of the file.
 * When it cannot be saved, all of them stay where they were. Asserts "core->mail".
 * @param messages  a list of messages of `core->mail`, which stays the caller's; may be null
 * @return as zox_mail_save()
 */
gint32 zox_mail_delete_messages(const GSList *messages);

/**
 * Replaces the list by the file's messages; pointers to messages become invalid. Without a file the
 * current list is saved. A file that cannot be opened leaves the list, one that is not understood
 * gives what can be read of it, message by message; of either, the next save makes a backup under a
 * name that ends in ".onleesbaar-" and the time. A core for reading only does not save the list.
 * @return 0; without a file as zox_mail_save()
 */
gint32 zox_mail_load(void);

/** @return 0 when the list was written to the file; -1 when it cannot be written */
gint32 zox_mail_save(void);

/** @return `core->mail`, a list of ZoxBericht that stays the core's, oldest first */
GSList *zox_mail_get(void);

/** @return the number of messages in `core->mail` */
guint32 zox_mail_get_num_messages(void);

/**
 * Addition to the interface: a number for a message that is made of its kind, other party, subject,
 * text and time, so that it is the same after a restart and on every machine, while the message's
 * address changes whenever the list is loaded. Messages that are the same in all of these have the
 * same number. Does not need the core. Threads: any, own data.
 * @param bericht  the message
 * @return the number, never 0
 */
guint64 zox_mail_id(const ZoxBericht *bericht);

/**
 * Addition to the interface: finds a message by its number.
 * @param id  a number of zox_mail_id()
 * @return the first message of `core->mail` with that number, which stays the core's; null when
 *         there is none
 */
ZoxBericht *zox_mail_find(guint64 id);

/**
 * Joins two lists of messages. Does not need the core. Threads: any, own data.
 * @param first   a list, or null
 * @param second  a list, or null
 * @return a new list of the same messages, those of `first` before those of `second`; only its
 *         cells are the caller's
 */
GSList *zox_mail_merge(GSList *first, GSList *second);

/**
 * Does not need the core. Threads: any.
 * @param from     the other party, copied; may be null
 * @param subject  subject, copied; may be null
 * @param body     text, copied; may be null
 * @param stamp    seconds since 1970
 * @return a new message with code 0; null when a text is null
 */
ZoxBericht *zox_mail_bericht_new(const char *from, const char *subject, const char *body,
                                 gint64 stamp);

/**
 * Releases a message. Does not need the core. Asserts "bericht", "bericht->from",
 * "bericht->subject" and "bericht->body". Threads: any, own data.
 * @param bericht  the message
 */
void zox_mail_bericht_free(ZoxBericht *bericht);

/**
 * Releases a list with its messages. Does not need the core. Asserts "bericht" (no item is null).
 * Threads: any, own data.
 * @param list  the list, or null
 */
void zox_mail_free(GSList *list);

/**
 * Prints a message as the file holds it. Texts stand in CDATA sections, without characters that XML
 * cannot hold; the time is printed as a signed 32-bit number and as local date. Asserts "bericht"
 * and "parsed_tekst" (what `textFunc` returns). Threads: any, own data.
 * @param bericht   the message
 * @param unused    has no meaning
 * @param textFunc  converts the body; may be null
 * @return a new text
 */
ZoxString *zox_mail_print(const ZoxBericht *bericht, gpointer unused, ZoxTextFunc textFunc);

/**
 * Reads a document of messages: root "Mail", children "Event" with the "Code" 1 or 2. Does not need
 * the core. Asserts "buffer", and as zox_mail_parse_bericht(). Threads: any, own data.
 * @param buffer  the document
 * @return a new list of ZoxBericht; null when there are none, with a message on standard error or a
 *         warning for an unusable document
 */
GSList *zox_mail_parse(const ZoxString *buffer);

/**
 * Reads one message. An empty element is an empty text; a missing one asserts "from", "subject" or
 * "body". Does not need the core. Threads: any, own data.
 * @param doc         the document
 * @param firstChild  the first child of the "Event", or null
 * @return a new message with code 0; in tolerant mode null, with a warning, when an element is
 *         missing
 */
ZoxBericht *zox_mail_parse_bericht(xmlDocPtr doc, xmlNodePtr firstChild);

G_END_DECLS

#endif
