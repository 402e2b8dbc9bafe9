/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENT_H
#define VELKOR_ZOX_EVENT_H

#include <glib-object.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxEvent {
  gint32           postId;
  gint64           stamp;
  gint64           updated;
  gint32           status;
  ZoxString       *fName;
  ZoxString       *title;
  ZoxSplittedList *groups;
  ZoxString       *poster;
  ZoxString       *link;
  gint32           cat;
  gint32           sCat;
  ZoxSplittedList *tags;
  ZoxString       *tag;
  gint32           rating;
  ZoxString       *ann;
  ZoxString       *des;
  ZoxString       *sig;
  gint32           fType;
  gint32           files;
  gint32           fStart;
  ZoxString       *img;
  ZoxForum        *forum;
  gint32           parType;
  gint32           pars;
  gint32           blockSize;
  gint32           view;
  gint32           kudos;
  GSList          *mp3Tracks;              /* ZoxString * */
  gint32           locked;
  ZoxString       *reason;
  gint32           watchlistUpdated;
  gint32           watcherHit;
} ZoxEvent;

/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
typedef struct _ZOXEventObject {
  GObject       parent;
  GStaticRWLock lock;
  ZoxEvent     *event;
} ZOXEventObject;
G_GNUC_END_IGNORE_DEPRECATIONS

ZoxEvent       *zox_event_new(void);
void            zox_event_free(ZoxEvent *event);
ZoxEvent       *zox_event_duplicate(const ZoxEvent *event);
GType           zox_event_object_get_type(void);
ZOXEventObject *zox_event_object_new(void);
void            zox_event_object_set_event(ZOXEventObject *object, const ZoxEvent *event);
ZoxEvent       *zox_event_object_get_event(ZOXEventObject *object);
void            zox_event_object_destroy(ZOXEventObject *object);

G_END_DECLS

#endif
