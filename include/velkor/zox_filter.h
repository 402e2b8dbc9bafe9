/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Filters: which postings the user wants to see and in which order; and the locked object in which
 * a filter is shared between threads.
 */
#ifndef VELKOR_ZOX_FILTER_H
#define VELKOR_ZOX_FILTER_H

#include <glib-object.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * A filter; it owns its texts and lists. The value behind each field is that of a new filter and
 * sets no condition. Only `name`, `cat`, `sCat`, `tags` and `extraTag` are saved with the filter
 * list.
 */
struct _ZoxFilter {
  ZoxString *name;         /**< null; for the display */
  gint64 sinceStamp;       /**< 0; lowest time of posting; ignored with `useDateRange` */
  guint32 postId;          /**< 0; the one posting that is accepted, whatever follows */
  ZoxString *titleSearch;  /**< null; occurs in the title, regardless of the case of a to z */
  ZoxString *posterSearch; /**< null; occurs in the poster's name, likewise */
  gint32 cat;              /**< -1; main category 0 to 3 */
  gint32 sCat;             /**< -1; sub-category; tested only when `cat` is set */
  GSList *tags;            /**< null; of ZoxString, none null: tag codes; one of each group a to d
                                that occurs here must be among the posting's */
  ZoxString *extraTag;     /**< null; a whole word of the free tag text, regardless of case */
  gint32 sortMode;         /**< 0; order of the view: 0 time, 1 title, 2 poster, 3 rating */
  gint32 sortAscending;    /**< 0; descending; non-zero: ascending */
  gint32 perCategory;      /**< 0; non-zero: the view is divided by main category */
  gint32 useDateRange;     /**< 0; non-zero: `dateFrom` and `dateTo` count */
  gint64 dateFrom;         /**< 0; lowest time of posting, inclusive */
  gint64 dateTo;           /**< 0; highest time of posting, inclusive */
  GSList *groupIdList;     /**< null; of ZoxString, none null: newsgroup numbers in decimal */
  GSList *statusList;      /**< null; states, GINT_TO_POINTER in the cells */
};

/** A filter behind a reader/writer lock; GObject type "ZOXFilterObject". */
/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
typedef struct _ZOXFilterObject {
  GObject parent;     /**< the reference count */
  GStaticRWLock lock; /**< guards `filter` */
  ZoxFilter *filter;  /**< the filter, owned; never touched without the lock */
} ZOXFilterObject;
G_GNUC_END_IGNORE_DEPRECATIONS

/**
 * Does not need the core. Threads: any.
 * @return a new filter with the values above
 */
ZoxFilter *zox_filter_new_filter(void);

/**
 * Copies a filter. A newsgroup condition only says that one is wanted: the copy's list is that of
 * the setting `groupFilterList`, whatever the source holds. Only then the core is needed. Threads:
 * any, own data.
 * @param filter  the filter to copy
 * @return a deep copy
 */
ZoxFilter *zox_filter_duplicate(const ZoxFilter *filter);

/**
 * Releases a filter with all that it owns. Does not need the core. Asserts "filter", "tag" and
 * "groupID" (no item is null). Threads: any, own data.
 * @param filter  the filter
 */
void zox_filter_free_filter(ZoxFilter *filter);

/**
 * Tests a posting. Beside the filter's own conditions, the posting's main category must have a
 * user's filter in `core->categories`; without one, nothing of that category is accepted. A filter
 * with a post id decides by `sinceStamp` and the id alone. Threads: any; with a `groupMode`, the
 * newsgroup set must stay meanwhile.
 * @param filter     the filter
 * @param event      the posting
 * @param groupMode  non-zero: newsgroups are tested against the active set of zox_groups.h, which
 *                   the caller has made from this filter's list; 0: against the filter's list
 * @return whether the filter accepts the posting
 */
gboolean zox_filter_accepts(const ZoxFilter *filter, const ZoxEvent *event, guint32 groupMode);

/**
 * Addition to the interface: tells which test of zox_filter_accepts() rejects a posting. The tests
 * in their order: 1 lowest time of posting and post id, 2 category and sub-category, 3 state,
 * 4 newsgroups, 5 title, 6 poster, 7 time range, 8 tags, 9 extra tag, 10 a user's filter for the
 * posting's main category. Threads: any, as zox_filter_accepts().
 * @param filter     the filter
 * @param event      the posting
 * @param groupMode  as for zox_filter_accepts()
 * @return 0 when the filter accepts the posting, else the number of the first test that fails
 */
gint32 zox_filter_explain(const ZoxFilter *filter, const ZoxEvent *event, guint32 groupMode);

/**
 * Tests the condition on tags alone. Does not need the core. Threads: any, own data.
 * @param filter  the filter
 * @param event   the posting
 * @return whether every group of tags that the filter names is met; true without tags
 */
gboolean zox_filter_accepts_tags(const ZoxFilter *filter, const ZoxEvent *event);

/**
 * Registers the type on its first call. Threads: any.
 * @return the type "ZOXFilterObject"
 */
GType zox_filter_object_get_type(void);

/**
 * Threads: any.
 * @return a new object with one reference, holding a new filter
 */
ZOXFilterObject *zox_filter_object_new(void);

/**
 * Replaces the filter held, under the object's writer lock. Threads: any.
 * @param object  the object
 * @param filter  the filter, copied as zox_filter_duplicate() copies
 */
void zox_filter_object_set_filter(ZOXFilterObject *object, const ZoxFilter *filter);

/**
 * Copies the filter held, under the object's reader lock. Threads: any.
 * @param object  the object
 * @return a copy as of zox_filter_duplicate(), which the caller releases
 */
ZoxFilter *zox_filter_object_get_filter(ZOXFilterObject *object);

/**
 * Threads: any.
 * @param object  the object
 * @return the post id of the filter held; 0 when it has none
 */
guint32 zox_filter_object_get_filter_postid(ZOXFilterObject *object);

/**
 * Tests a posting with the filter held, under the object's reader lock. Threads: any,
 * as zox_filter_accepts().
 * @param object     the object
 * @param event      the posting
 * @param groupMode  as for zox_filter_accepts()
 * @return whether the filter accepts the posting
 */
gboolean zox_filter_object_accepts(ZOXFilterObject *object, const ZoxEvent *event,
                                   guint32 groupMode);

/**
 * Drops one reference. Threads: any.
 * @param object  the object
 */
void zox_filter_object_destroy(ZOXFilterObject *object);

G_END_DECLS

#endif
