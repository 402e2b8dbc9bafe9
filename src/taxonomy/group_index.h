/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The table of newsgroups by id, for whoever looks up one after the other. */
#ifndef VELKOR_TAXONOMY_GROUP_INDEX_H
#define VELKOR_TAXONOMY_GROUP_INDEX_H

#include <memory>

#include <velkor/zox_groups.h>

#include "support/owned.h"

namespace velkor {

/** Serves one document; the table does not change meanwhile. */
class GroupIndex {
public:
  /** What zox_group_by_id() finds. */
  [[nodiscard]] const ZoxGroup *find(guint32 id) noexcept;

private:
  /** An index only pays from some lookups on; before, the table itself is searched. */
  static constexpr int lookups_without_index = 4;

  void read() noexcept;

  int lookups_ = 0;
  std::unique_ptr<GHashTable, ReleaseWith<g_hash_table_destroy>> groups_;
};

}  // namespace velkor

#endif
