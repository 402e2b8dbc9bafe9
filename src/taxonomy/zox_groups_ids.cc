/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The newsgroup id set of a filter pass: plain integers, so that a posting's test is one scan. */
#include <velkor/zox_groups.h>

#include <algorithm>
#include <span>

#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

gint32 *groupIds = nullptr;
gint32 groupIdLen = 0;

using namespace velkor;

extern "C" {

void zox_group_set_group_id_list(GSList *grouplist) {
  ZOX_ASSERT(groupIds == NULL);
  ZOX_ASSERT(grouplist);
  groupIds = g_new(gint32, g_slist_length(grouplist));
  groupIdLen = 0;
  for (const ZoxString *groupId : Items<ZoxString>(grouplist)) {
    ZOX_ASSERT(groupId);
    groupIds[groupIdLen++] = leading_integer(groupId->str);
  }
}

void zox_group_unset_group_id_list(void) {
  ZOX_ASSERT(groupIds);
  g_free(groupIds);
  groupIds = nullptr;
  groupIdLen = 0;
}

gboolean zox_group_id_is_in_list(guint32 id) {
  ZOX_ASSERT(groupIds);
  if (groupIdLen < 1)
    return FALSE;
  const std::span<const gint32> ids(groupIds, static_cast<std::size_t>(groupIdLen));
  return std::ranges::find(ids, static_cast<gint32>(id)) != ids.end();
}

}  // extern "C"
