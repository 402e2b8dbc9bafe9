/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTS_FORUM_H
#define VELKOR_ZOX_EVENTS_FORUM_H

#include <libxml/tree.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

struct _ZoxForum {
  GSList *reactions;                       /* ZoxReactie * */
  gint64  stamp;
};

typedef struct _ZoxReactie {
  guint32    messId;
  ZoxString *author;
  ZoxString *body;
  gint64     stamp;
  gint64     edit;
  guint32    kudos;
  guint32    reply;
  ZoxString *avatar;
} ZoxReactie;

typedef gint (*ZoxForumCallback)(ZoxErrorCode result, gint32 postId, gint32 lastCheck,
                                 char *message, gpointer userData);

ZoxForum    *zox_events_forum_new(void);
void         zox_events_forum_free(ZoxForum *forum);
ZoxReactie  *zox_events_forum_reactie_new(void);
void         zox_events_forum_reactie_free(ZoxReactie *reactie);
ZoxErrorCode zox_events_forum_fetch(gint32 postId, gint32 lastCheck, char **message);
void         zox_events_forum_fetch_async(gint32 postId, gint32 lastCheck,
                                          ZoxForumCallback callback, gpointer userData);
ZoxErrorCode zox_events_forum_post(const char *text, gint32 postId, gint32 unused,
                                   char **message);
gint32       zox_events_forum_parse(const ZoxString *buffer, ZoxEvent *event);
void         zox_events_forum_parse_forum(xmlDocPtr doc, xmlNodePtr firstChild,
                                          ZoxEvent *event, gint32 dropWithdrawn);
void         zox_events_forum_parse_data(xmlDocPtr doc, xmlNodePtr firstChild,
                                         ZoxEvent *event);
void         zox_events_forum_parse_kudos(xmlDocPtr doc, xmlNodePtr firstChild,
                                          ZoxEvent *event);
ZoxString   *zox_events_forum_print(const ZoxEvent *event, ZoxTextFunc textFunc);
guint32      zox_events_forum_get_highest_length(const ZoxReactie *reactie);

G_END_DECLS

#endif
