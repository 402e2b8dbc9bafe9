/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_FILTERLIST_H
#define VELKOR_ZOX_FILTERLIST_H

#include <glib-object.h>

#include <velkor/zox_filter.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
struct _ZOXFilterlist {
  GObject          parent;
  GStaticRWLock    lock;
  GSList          *filters;                /* ZoxFilter * */
  ZOXFilterObject *activeFilter;
};
G_GNUC_END_IGNORE_DEPRECATIONS

typedef gint (*ZoxFilterlistFunc)(ZoxFilter *filter, gpointer userData);

GType            zox_filterlist_get_type(void);
ZOXFilterlist   *zox_filterlist_new(void);
void             zox_filterlist_destroy(ZOXFilterlist *list);
void             zox_filterlist_load(ZOXFilterlist *list);
void             zox_filterlist_save(ZOXFilterlist *list);
void             zox_filterlist_set_filters(ZOXFilterlist *list, GSList *filters);
void             zox_filterlist_append_filter(ZOXFilterlist *list, const ZoxFilter *filter);
void             zox_filterlist_foreach(ZOXFilterlist *list, gint32 readOnly,
                                        ZoxFilterlistFunc func, gpointer userData);
ZOXFilterObject *zox_filterlist_get_active_filter(ZOXFilterlist *list);

G_END_DECLS

#endif
