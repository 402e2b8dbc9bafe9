/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_groups.h>

#include <velkor/zox_app_core.h>

#include "support/assertion.h"
#include "support/slist.h"
#include "taxonomy/group_record.h"

using namespace velkor;

extern "C" {

GSList *zox_groups_get(void) {
  ZOX_ASSERT(core);
  return core->groups;
}

gboolean zox_group_list_ready(void) {
  ZOX_ASSERT(core);
  return core->groups != nullptr;
}

ZoxGroup *zox_group_by_id(guint32 id) {
  ZOX_ASSERT(core);
  for (ZoxGroup *group : Items<ZoxGroup>(core->groups)) {
    if (group->id == id)
      return group;
  }
  return nullptr;
}

ZoxGroup *zox_group_new(void) {
  return g_new0(ZoxGroup, 1);
}

void zox_group_free(ZoxGroup *group) {
  ZOX_ASSERT(group);
  ZOX_ASSERT(group->groupName);
  release_group(group);
}

void zox_group_free_all(void) {
  ZOX_ASSERT(core);
  for (ZoxGroup *group : Items<ZoxGroup>(core->groups))
    release_group(group);
  g_slist_free(core->groups);
  core->groups = nullptr;
}

}  // extern "C"
