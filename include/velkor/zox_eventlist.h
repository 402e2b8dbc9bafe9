/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTLIST_H
#define VELKOR_ZOX_EVENTLIST_H

#include <glib-object.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
struct _ZOXEventlist {
  GObject       parent;
  GStaticRWLock lock;
  GHashTable   *tree;                      /* GINT_TO_POINTER(postId) -> ZOXEventObject * */
  GHashTable   *filtered;
  ZoxFilter    *activeFilter;
};
G_GNUC_END_IGNORE_DEPRECATIONS

typedef gint (*ZoxEventlistFunc)(gpointer key, ZoxEvent *event, gpointer userData);
typedef gint (*ZoxEventlistProgress)(guint32 total, guint32 done, gpointer userData);

GType         zox_eventlist_get_type(void);
ZOXEventlist *zox_eventlist_new(void);
void          zox_eventlist_destroy(ZOXEventlist *list);
ZoxErrorCode  zox_eventlist_load(ZOXEventlist *list, char **retError);
gint32        zox_eventlist_save(ZOXEventlist *list);
void          zox_eventlist_merge(ZOXEventlist *list, GSList *objects,
                                  ZoxEventlistProgress progress, gpointer userData);
void          zox_eventlist_add_or_replace_event(ZOXEventlist *list, const ZoxEvent *event);
ZoxEvent     *zox_eventlist_lookup_id(ZOXEventlist *list, gint32 postId);
guint32       zox_eventlist_get_count(ZOXEventlist *list, gint32 filtered);
ZoxFilter    *zox_eventlist_get_filter(ZOXEventlist *list);
ZoxEvent     *zox_eventlist_get_first_filtered_event(ZOXEventlist *list);
void          zox_eventlist_apply_filter(ZOXEventlist *list, const ZoxFilter *filter);
void          zox_eventlist_foreach(ZOXEventlist *list, gint32 filtered, gint32 readOnly,
                                    ZoxEventlistFunc func, gpointer userData);
void          zox_eventlist_purge_deleted(ZOXEventlist *list);
void          zox_eventlist_cleanup(ZOXEventlist *list);

G_END_DECLS

#endif
