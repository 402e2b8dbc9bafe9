/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Split lists: lists of texts that are stored as one text with "|" before, between and after the
 * items.
 *
 * None of these functions needs the core. Threads: any, own data.
 */
#ifndef VELKOR_ZOX_SPLITTED_LIST_H
#define VELKOR_ZOX_SPLITTED_LIST_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** A list of ZoxString, never null items; the empty list is null. */
typedef GSList ZoxSplittedList;

/**
 * Splits at every "|" and drops empty pieces: "||a||b|" gives a and b.
 * @param text  the stored form
 * @return a new list; null when nothing remains
 */
ZoxSplittedList *zox_splitted_list_split(const char *text);

/**
 * @param list  the list, or null
 * @return a new text, the stored form: "|a|b|" for a and b; "|" for the empty list and for the
 *         list of one empty item
 */
ZoxString *zox_splitted_list_concat(ZoxSplittedList *list);

/**
 * @param list  the list, or null
 * @return a deep copy in the same order; null for null
 */
ZoxSplittedList *zox_splitted_list_duplicate(ZoxSplittedList *list);

/**
 * Releases a list with its items and sets the place that holds it to null.
 * @param listPlace  where the list is held; its content may be null
 */
void zox_splitted_list_free(ZoxSplittedList **listPlace);

G_END_DECLS

#endif
