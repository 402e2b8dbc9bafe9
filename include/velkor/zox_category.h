/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_CATEGORY_H
#define VELKOR_ZOX_CATEGORY_H

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxCategory {
  ZoxString *name;
  gint32     id;
  gint32     isMain;
  ZoxFilter *filter;
  gint32     count;
} ZoxCategory;

void         zox_categories_init(void);
void         zox_categories_free(void);
GSList      *zox_categories_get(void);
void         zox_categories_reset_counters(void);
void         zox_category_update(const ZoxEvent *event);
GSList      *zox_category_find(const ZoxEvent *event);
ZoxCategory *zox_category_get_parent(gint32 id);
const char  *zox_category_get_scat_name(gint32 category, guint32 subCategory);

G_END_DECLS

#endif
