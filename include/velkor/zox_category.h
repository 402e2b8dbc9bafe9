/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The categories: the four main ones and, under each, the user's filters bound to it, with
 * counters; and the names of the sub-categories.
 *
 * The tree may be built anew while fetches in the background count what they find. Its entries are
 * for the thread that builds it. Where nothing else is said, a function asserts "core->categories"
 * (built and not empty), "category" (no entry is null) and "category->name". Threads: one at a
 * time, hand-over allowed.
 */
#ifndef VELKOR_ZOX_CATEGORY_H
#define VELKOR_ZOX_CATEGORY_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** One entry of the tree. */
typedef struct _ZoxCategory {
  ZoxString *name;   /**< for the display, owned, never null; empty for a filter without a name */
  gint32 id;         /**< main category 0 to 3, see zox_string_category() */
  gint32 isMain;     /**< 1 for a main category, 0 for an entry made from a user's filter */
  ZoxFilter *filter; /**< what the entry counts, owned */
  gint32 count;      /**< postings accepted since zox_categories_reset_counters() */
} ZoxCategory;

/**
 * Builds `core->categories` anew from the filter list: each main category followed by copies of the
 * filters of that category, in their order. Asserts "core->filterlist"; needs no categories.
 */
void zox_categories_init(void);

/** Releases all entries; `core->categories` becomes null. */
void zox_categories_free(void);

/**
 * Asserts nothing but the core.
 * @return `core->categories`, a list of ZoxCategory that stays the core's; null before it was built
 */
GSList *zox_categories_get(void);

/** Sets every counter to 0. */
void zox_categories_reset_counters(void);

/**
 * Counts a posting in every entry whose filter accepts it; newsgroup conditions are tested against
 * the set of zox_groups.h (group mode 1). Threads: any, but not beside a reader of `count`.
 * @param event  the posting
 */
void zox_category_update(const ZoxEvent *event);

/**
 * Finds the entries whose filter accepts a posting; newsgroup conditions are tested against the
 * filter's own list (group mode 0).
 * @param event  the posting
 * @return a new list of ZoxCategory; the caller frees the cells, the entries stay the core's
 */
GSList *zox_category_find(const ZoxEvent *event);

/**
 * @param id  number of a main category
 * @return the entry of that main category, which stays the core's; null for any other number
 */
ZoxCategory *zox_category_get_parent(gint32 id);

/**
 * The name of a sub-category. Does not need the core. Threads: any.
 * @param category     main category 0 to 3
 * @param subCategory  number within it, from 0
 * @return the name; the empty text for a pair that does not exist
 */
const char *zox_category_get_scat_name(gint32 category, guint32 subCategory);

G_END_DECLS

#endif
