/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_MYZOX_H
#define VELKOR_ZOX_MYZOX_H

#include <libxml/tree.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxMyzoxPost {
  gint32           postId;
  gint64           stamp;
  guint32          canEdit;
  ZoxString       *title;
  ZoxSplittedList *groups;
  ZoxString       *fName;
  guint32          status;
  ZoxString       *poster;
  ZoxString       *link;
  guint32          cat;
  guint32          sCat;
  gint64           updated;
  guint32          kudos;
  guint32          forum;
  guint32          reps;
  guint32          reqs;
  guint32          rating;
  guint32          mod;
} ZoxMyzoxPost;

ZoxErrorCode zox_myzox_update(gint32 postId, char **message);
gint32       zox_myzox_parse(const ZoxString *buffer, GSList **list);
void         zox_myzox_parse_event(xmlDocPtr doc, xmlNodePtr firstChild, ZoxMyzoxPost *post);
xmlDocPtr    zox_myzox_print(GSList *list);

G_END_DECLS

#endif
