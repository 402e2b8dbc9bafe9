/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners of one newsgroup and of a list of them. A newsgroup met in a document may be nameless. */
#ifndef VELKOR_TAXONOMY_GROUP_RECORD_H
#define VELKOR_TAXONOMY_GROUP_RECORD_H

#include <memory>

#include <velkor/zox_groups.h>

#include "support/owned.h"
#include "support/slist.h"

namespace velkor {

inline void release_group(ZoxGroup *group) noexcept {
  replace_string(group->groupName, nullptr);
  g_free(group);
}

using OwnedGroup = std::unique_ptr<ZoxGroup, ReleaseWith<release_group>>;
using GroupList = ListBuilder<ZoxGroup, release_group>;

}  // namespace velkor

#endif
