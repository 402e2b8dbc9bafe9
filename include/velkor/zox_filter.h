/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_FILTER_H
#define VELKOR_ZOX_FILTER_H

#include <glib-object.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

struct _ZoxFilter {
  ZoxString *name;
  gint64     sinceStamp;
  guint32    postId;
  ZoxString *titleSearch;
  ZoxString *posterSearch;
  gint32     cat;
  gint32     sCat;
  GSList    *tags;                         /* ZoxString * */
  ZoxString *extraTag;
  gint32     sortMode;
  gint32     sortAscending;
  gint32     perCategory;
  gint32     useDateRange;
  gint64     dateFrom;
  gint64     dateTo;
  GSList    *groupIdList;                  /* ZoxString * */
  GSList    *statusList;                   /* GINT_TO_POINTER */
};

/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
typedef struct _ZOXFilterObject {
  GObject       parent;
  GStaticRWLock lock;
  ZoxFilter    *filter;
} ZOXFilterObject;
G_GNUC_END_IGNORE_DEPRECATIONS

ZoxFilter *zox_filter_new_filter(void);
ZoxFilter *zox_filter_duplicate(const ZoxFilter *filter);
void       zox_filter_free_filter(ZoxFilter *filter);
gboolean   zox_filter_accepts(const ZoxFilter *filter, const ZoxEvent *event,
                              guint32 groupMode);
gboolean   zox_filter_accepts_tags(const ZoxFilter *filter, const ZoxEvent *event);
GType            zox_filter_object_get_type(void);
ZOXFilterObject *zox_filter_object_new(void);
void             zox_filter_object_set_filter(ZOXFilterObject *object,
                                              const ZoxFilter *filter);
ZoxFilter       *zox_filter_object_get_filter(ZOXFilterObject *object);
guint32          zox_filter_object_get_filter_postid(ZOXFilterObject *object);
gboolean         zox_filter_object_accepts(ZOXFilterObject *object, const ZoxEvent *event,
                                           guint32 groupMode);
void             zox_filter_object_destroy(ZOXFilterObject *object);

G_END_DECLS

#endif
