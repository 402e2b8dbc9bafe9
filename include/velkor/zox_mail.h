/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_MAIL_H
#define VELKOR_ZOX_MAIL_H

#include <libxml/tree.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxBericht {
  ZoxString *from;
  ZoxString *subject;
  ZoxString *body;
  gint64     stamp;
  guint32    code;
} ZoxBericht;

ZoxErrorCode zox_mail_check(guint32 *mailWaiting, char **message);
ZoxErrorCode zox_mail_fetch(guint32 *numNewMail, char **message);
ZoxErrorCode zox_mail_post(ZoxBericht *bericht, char **message);
gint32       zox_mail_delete(ZoxBericht *bericht);
gint32       zox_mail_load(void);
gint32       zox_mail_save(void);
GSList      *zox_mail_get(void);
guint32      zox_mail_get_num_messages(void);
GSList      *zox_mail_merge(GSList *first, GSList *second);
ZoxBericht  *zox_mail_bericht_new(const char *from, const char *subject, const char *body,
                                  gint64 stamp);
void         zox_mail_bericht_free(ZoxBericht *bericht);
void         zox_mail_free(GSList *list);
ZoxString   *zox_mail_print(const ZoxBericht *bericht, gpointer unused,
                            ZoxTextFunc textFunc);
GSList      *zox_mail_parse(const ZoxString *buffer);
ZoxBericht  *zox_mail_parse_bericht(xmlDocPtr doc, xmlNodePtr firstChild);

G_END_DECLS

#endif
