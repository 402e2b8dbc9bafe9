/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The table of newsgroups, and the id set of a filter pass. */
#include <velkor/zox_groups.h>

#include <algorithm>
#include <span>

#include <velkor/zox_app_core.h>

#include "core/core_lock.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"
#include "taxonomy/group_record.h"

/* Plain integers, so that a posting's test is one scan. */
gint32 *groupIds = nullptr;
gint32 groupIdLen = 0;

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

void zox_group_set_group_id_list(GSList *grouplist) {
  ZOX_ASSERT(groupIds == NULL);
  ZOX_ASSERT(grouplist);
  const CoreWriter guard;
  groupIds = g_new(gint32, g_slist_length(grouplist));
  groupIdLen = 0;
  for (const ZoxString *groupId : Items<ZoxString>(grouplist)) {
    ZOX_ASSERT(groupId);
    groupIds[groupIdLen++] = leading_integer(groupId->str);
  }
}

void zox_group_unset_group_id_list(void) {
  ZOX_ASSERT(groupIds);
  const CoreWriter guard;
  g_free(groupIds);
  groupIds = nullptr;
  groupIdLen = 0;
}

gboolean zox_group_id_is_in_list(guint32 id) {
  const CoreReader guard;
  ZOX_ASSERT(groupIds);
  if (groupIdLen < 1)
    return FALSE;
  const std::span<const gint32> ids(groupIds, static_cast<std::size_t>(groupIdLen));
  return std::ranges::find(ids, static_cast<gint32>(id)) != ids.end();
}

}  // extern "C"
