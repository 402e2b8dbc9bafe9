/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The table of newsgroups by id, for whoever looks up one after the other. */
#ifndef VELKOR_TAXONOMY_GROUP_INDEX_H
#define VELKOR_TAXONOMY_GROUP_INDEX_H

#include <optional>
#include <unordered_map>

#include <velkor/zox_groups.h>

namespace velkor {

/** Serves one document; the table does not change meanwhile. */
class GroupIndex {
public:
  /** What zox_group_by_id() finds. */
  [[nodiscard]] const ZoxGroup *find(guint32 id) noexcept;

private:
  using Groups = std::unordered_map<guint32, const ZoxGroup *>;

  /** An index only pays from some lookups on; before, the table itself is searched. */
  static constexpr int lookups_without_index = 8;

  static Groups read() noexcept;

  int lookups_ = 0;
  std::optional<Groups> groups_;
};

}  // namespace velkor

#endif
