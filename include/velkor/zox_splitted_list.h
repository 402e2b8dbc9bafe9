/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_SPLITTED_LIST_H
#define VELKOR_ZOX_SPLITTED_LIST_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef GSList ZoxSplittedList;            /* of ZoxString *, items never null */

ZoxSplittedList *zox_splitted_list_split(const char *text);
ZoxString       *zox_splitted_list_concat(ZoxSplittedList *list);
ZoxSplittedList *zox_splitted_list_duplicate(ZoxSplittedList *list);
void             zox_splitted_list_free(ZoxSplittedList **listPlace);

G_END_DECLS

#endif
