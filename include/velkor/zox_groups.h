/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_GROUPS_H
#define VELKOR_ZOX_GROUPS_H

#include <libxml/tree.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

typedef struct _ZoxGroup {
  guint32    id;
  ZoxString *groupName;
} ZoxGroup;

extern gint32 *groupIds;
extern gint32  groupIdLen;

GSList      *zox_groups_get(void);
gboolean     zox_group_list_ready(void);
ZoxGroup    *zox_group_by_id(guint32 id);
ZoxGroup    *zox_group_new(void);
void         zox_group_free(ZoxGroup *group);
void         zox_group_free_all(void);
GSList      *zox_group_parse(const ZoxString *buffer);
ZoxGroup    *zox_group_parse_group(xmlDocPtr doc, xmlNodePtr firstChild);
void         zox_group_load(void);
gint32       zox_group_save(void);
ZoxErrorCode zox_group_fetch(void);
void         zox_group_set_group_id_list(GSList *grouplist);
void         zox_group_unset_group_id_list(void);
gboolean     zox_group_id_is_in_list(guint32 id);

G_END_DECLS

#endif
