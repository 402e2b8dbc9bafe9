/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "taxonomy/group_index.h"

#include <velkor/zox_app_core.h>

#include "support/slist.h"

namespace velkor {

/** Of newsgroups with the same id, the first counts. */
GroupIndex::Groups GroupIndex::read() noexcept {
  Groups groups;
  for (const ZoxGroup *group : Items<const ZoxGroup>(core->groups))
    groups.emplace(group->id, group);
  return groups;
}

const ZoxGroup *GroupIndex::find(guint32 id) noexcept {
  if (lookups_ < lookups_without_index) {
    ++lookups_;
    return zox_group_by_id(id);
  }
  if (!groups_)
    groups_ = read();
  const auto place = groups_->find(id);
  return place == groups_->end() ? nullptr : place->second;
}

}  // namespace velkor
