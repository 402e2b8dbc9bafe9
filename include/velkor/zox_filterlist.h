/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The user's saved filters in their order, kept in the plain XML file "velkor.filters" in the cache
 * directory.
 */
#ifndef VELKOR_ZOX_FILTERLIST_H
#define VELKOR_ZOX_FILTERLIST_H

#include <glib-object.h>

#include <velkor/zox_filter.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** The filter list; GObject type "ZOXFilterlist". Its fields are the library's business. */
/* GLib marks the static lock deprecated; its place in this record is fixed. */
G_GNUC_BEGIN_IGNORE_DEPRECATIONS
struct _ZOXFilterlist {
  GObject parent;                /**< the reference count */
  GStaticRWLock lock;            /**< guards the fields below */
  GSList *filters;               /**< of ZoxFilter, owned, in their order */
  ZOXFilterObject *activeFilter; /**< one reference; null unless a front end sets it */
};
G_GNUC_END_IGNORE_DEPRECATIONS

/**
 * Called for one filter of a walk.
 * @param filter    the list's own filter; it may be changed in a walk for writing only
 * @param userData  the data given to the walk
 * @return ignored
 */
typedef gint (*ZoxFilterlistFunc)(ZoxFilter *filter, gpointer userData);

/**
 * Registers the type on its first call. Threads: any.
 * @return the type "ZOXFilterlist"
 */
GType zox_filterlist_get_type(void);

/**
 * Threads: any.
 * @return a new empty list with one reference
 */
ZOXFilterlist *zox_filterlist_new(void);

/**
 * Drops one reference; the last one releases all filters. Threads: any.
 * @param list  the list
 */
void zox_filterlist_destroy(ZOXFilterlist *list);

/**
 * Replaces the filters by those of the file. Without a file that can be opened the sixteen default
 * filters are installed and saved. A file that cannot be understood leaves the list empty, with a
 * message on standard error or a warning. Of either unreadable file, the next save makes a backup
 * under a name that ends in ".onleesbaar-" and the time. The categories are not rebuilt. Threads:
 * any.
 * @param list  the list
 */
void zox_filterlist_load(ZOXFilterlist *list);

/**
 * Writes the file; only zox_file_last_error() tells of a failure. Several threads may save the same
 * list: each save is whole, the last one stands. Asserts "filter" (no filter is null). Threads:
 * any.
 * @param list  the list
 */
void zox_filterlist_save(ZOXFilterlist *list);

/**
 * Replaces all filters, rebuilds the categories and saves. Threads: one at a time, hand-over
 * allowed.
 * @param list     the list
 * @param filters  of ZoxFilter, copied; may be empty
 */
void zox_filterlist_set_filters(ZOXFilterlist *list, GSList *filters);

/**
 * Adds a filter at the end. Neither saves nor rebuilds the categories. Threads: any.
 * @param list    the list
 * @param filter  the filter, copied
 */
void zox_filterlist_append_filter(ZOXFilterlist *list, const ZoxFilter *filter);

/**
 * Addition to the interface: reads filters from a document like that of the file "velkor.filters".
 * Does not need the core. Asserts "document" and "filters". Threads: any.
 * @param document  the text of the document
 * @param filters   becomes a list of ZoxFilter in the order of the document, which the caller
 *                  releases with zox_filter_free_filter() and g_slist_free(); null without filters
 *                  or after a failure
 * @return 0 when the document was read, 1 when it is not well-formed XML, 2 when it is of another
 *         kind
 */
gint32 zox_filterlist_parse(const ZoxString *document, GSList **filters);

/**
 * Addition to the interface: the document that zox_filterlist_save() would write of a list with
 * these filters, and that zox_filterlist_parse() reads. Does not need the core. Asserts "filter"
 * (no filter is null). Threads: any.
 * @param filters  of ZoxFilter; may be empty
 * @return the text of the document, which the caller releases
 */
ZoxString *zox_filterlist_print(const GSList *filters);

/**
 * Calls a function with each filter, in order. Asserts "func". Threads: any.
 * @param list      the list
 * @param readOnly  non-zero to hold the lock for reading during the walk, 0 for writing
 * @param func      the function; it must not call back into the list
 * @param userData  handed to `func`
 */
void zox_filterlist_foreach(ZOXFilterlist *list, gint32 readOnly, ZoxFilterlistFunc func,
                            gpointer userData);

/**
 * Threads: any.
 * @param list  the list
 * @return `activeFilter` with a new reference, which the caller drops; null when there is none
 */
ZOXFilterObject *zox_filterlist_get_active_filter(ZOXFilterlist *list);

G_END_DECLS

#endif
