/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * One posting: its record, and the locked object in which the event list holds it.
 *
 * None of these functions needs the core.
 */
#ifndef VELKOR_ZOX_EVENT_H
#define VELKOR_ZOX_EVENT_H

#include <glib-object.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * One posting; it owns its texts, lists and forum. The value behind each field is that of a new
 * record. The fields up to `rating` reach the cache file; "details" come with
 * zox_eventinfo_fetch(), "forum" with zox_events_forum_fetch() and both live in memory only.
 */
typedef struct _ZoxEvent {
  gint32 postId;           /**< -1; id on the server, key of the event list */
  gint64 stamp;            /**< 0; time of posting, as the server states it */
  gint64 updated;          /**< 0; time of the last change on the server */
  gint32 status;           /**< -5; state, for the words see zox_string_status() */
  ZoxString *fName;        /**< null; file name */
  ZoxString *title;        /**< null */
  ZoxSplittedList *groups; /**< null; newsgroup ids in decimal */
  ZoxString *poster;       /**< null; name of the poster */
  ZoxString *link;         /**< null; web address given by the poster */
  gint32 cat;              /**< -1; main category 0 to 3, see zox_string_category() */
  gint32 sCat;             /**< -1; sub-category, see zox_category_get_scat_name() */
  ZoxSplittedList *tags;   /**< null; tag codes such as "a0", see zox_tags.h */
  ZoxString *tag;          /**< null; free tag text given by the poster */
  gint32 rating;    /**< 0; as the server states it; the display scales it by 100 / `ratingScale` */
  ZoxString *ann;   /**< null; details: announcement */
  ZoxString *des;   /**< null; details: description */
  ZoxString *sig;   /**< null; details: signature */
  gint32 fType;     /**< 0; details: file type */
  gint32 files;     /**< 0; details: number of files */
  gint32 fStart;    /**< 0; details: where the files start */
  ZoxString *img;   /**< null; details: image */
  ZoxForum *forum;  /**< null until the forum was fetched */
  gint32 parType;   /**< 0; forum: the server's "ParType" */
  gint32 pars;      /**< 0; forum: number of par files */
  gint32 blockSize; /**< 0; forum: block size of the par files */
  gint32 view;      /**< 0; forum: number of views */
  gint32 kudos;     /**< 0; forum: number of kudos */
  GSList *mp3Tracks;       /**< null; of ZoxString, none null; details: track texts in order */
  gint32 locked;           /**< 0; forum: non-zero when closed for reactions */
  ZoxString *reason;       /**< null; forum: why the posting was removed */
  gint32 watchlistUpdated; /**< 0; 1 when a merge replaced this posting of the watchlist */
  gint32 watcherHit;       /**< 0; 1 when a watcher matched this posting in a merge */
} ZoxEvent;

/** A posting behind a reader/writer lock; GObject type "ZOXEventObject". */
/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
typedef struct _ZOXEventObject {
  GObject parent;     /**< the reference count */
  GStaticRWLock lock; /**< guards `event` */
  ZoxEvent *event;    /**< the posting, owned; never touched without the lock */
} ZOXEventObject;
G_GNUC_END_IGNORE_DEPRECATIONS

/**
 * Threads: any.
 * @return a new record with the values above
 */
ZoxEvent *zox_event_new(void);

/**
 * Releases a record with all that it owns. Asserts "event" and "track" (no track is null). Threads:
 * any, own data.
 * @param event  the record
 */
void zox_event_free(ZoxEvent *event);

/**
 * Threads: any, own data.
 * @param event  the record to copy
 * @return a deep copy, forum and both flags included
 */
ZoxEvent *zox_event_duplicate(const ZoxEvent *event);

/**
 * Registers the type on its first call. Threads: any.
 * @return the type "ZOXEventObject"
 */
GType zox_event_object_get_type(void);

/**
 * Threads: any.
 * @return a new object with one reference, holding a new record
 */
ZOXEventObject *zox_event_object_new(void);

/**
 * Replaces the posting held, under the object's writer lock. Threads: any.
 * @param object  the object
 * @param event   the posting, copied
 */
void zox_event_object_set_event(ZOXEventObject *object, const ZoxEvent *event);

/**
 * Copies the posting held, under the object's reader lock. Threads: any.
 * @param object  the object
 * @return a copy, which the caller releases with zox_event_free()
 */
ZoxEvent *zox_event_object_get_event(ZOXEventObject *object);

/**
 * Drops one reference. Threads: any.
 * @param object  the object
 */
void zox_event_object_destroy(ZOXEventObject *object);

G_END_DECLS

#endif
