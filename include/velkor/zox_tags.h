/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The vocabulary of tags: what a code such as "a0" means within a main category. The letter names
 * a group of tags, the number an entry of it, from 0.
 *
 * The vocabulary is fixed: once built it may be read by any thread until it is freed.
 */
#ifndef VELKOR_ZOX_TAGS_H
#define VELKOR_ZOX_TAGS_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** One entry; see below. */
typedef struct _ZoxTag ZoxTag;

/** A tag, or the head of a group of tags. */
struct _ZoxTag {
  guint32 category; /**< main category 0 to 3, see zox_string_category() */
  ZoxTag *group;    /**< the head of the tag's group; null for a head */
  ZoxString *code;  /**< the code, owned; null for a head */
  ZoxString *name;  /**< name of the tag or of the group, owned, never null */
};

/** Builds `core->tags`. Asserts "core->tags == NULL". Threads: one at a time, hand-over allowed. */
void zox_tags_init(void);

/**
 * Releases the vocabulary; `core->tags` becomes null. Threads: one at a time, hand-over allowed.
 */
void zox_tags_free(void);

/**
 * Threads: any.
 * @return `core->tags`, a list of ZoxTag that stays the core's: by category, each group's head
 *         before its tags; null before it was built
 */
GSList *zox_get_tags(void);

/**
 * Threads: any.
 * @param category  main category 0 to 3
 * @return a new list of that category's ZoxTag, heads included; the caller frees the cells, the
 *         entries stay the core's. Null when there is none
 */
GSList *zox_tag_get_tags_in_cat(guint32 category);

/**
 * Threads: any.
 * @param code      the code, exact in letter case
 * @param category  main category 0 to 3
 * @return the tag, which stays the core's; null when there is none
 */
ZoxTag *zox_tag_find(const ZoxString *code, gint32 category);

G_END_DECLS

#endif
