/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_TAGS_H
#define VELKOR_ZOX_TAGS_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxTag ZoxTag;

struct _ZoxTag {
  guint32    category;
  ZoxTag    *group;
  ZoxString *code;
  ZoxString *name;
};

void    zox_tags_init(void);
void    zox_tags_free(void);
GSList *zox_get_tags(void);
GSList *zox_tag_get_tags_in_cat(guint32 category);
ZoxTag *zox_tag_find(const ZoxString *code, gint32 category);

G_END_DECLS

#endif
