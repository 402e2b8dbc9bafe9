/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "taxonomy/group_index.h"

#include <velkor/zox_app_core.h>

#include "support/slist.h"

namespace velkor {

/** Of newsgroups with the same id, the first counts. */
void GroupIndex::read() noexcept {
  groups_.reset(g_hash_table_new(g_direct_hash, nullptr));
  for (ZoxGroup *group : Items<ZoxGroup>(core->groups)) {
    gpointer id = GUINT_TO_POINTER(group->id);
    if (g_hash_table_contains(groups_.get(), id) == FALSE)
      g_hash_table_insert(groups_.get(), id, group);
  }
}

const ZoxGroup *GroupIndex::find(guint32 id) noexcept {
  if (lookups_ < lookups_without_index) {
    ++lookups_;
    return zox_group_by_id(id);
  }
  if (!groups_)
    read();
  return static_cast<const ZoxGroup *>(g_hash_table_lookup(groups_.get(), GUINT_TO_POINTER(id)));
}

}  // namespace velkor
