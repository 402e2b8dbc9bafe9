/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The whole watchlist at once, for whoever asks about one posting after the other. */
#ifndef VELKOR_FILTER_WATCHED_IDS_H
#define VELKOR_FILTER_WATCHED_IDS_H

#include <memory>

#include <glib.h>

#include "support/owned.h"

namespace velkor {

/** The watchlist as it is when the first postings are asked about, for one pass. */
class WatchedIds {
public:
  /** What zox_watchlist_is_in_list() answers. */
  [[nodiscard]] bool contains(gint32 postId) noexcept;
  /** Takes one id more for the rest of the pass; false when it is there already. */
  bool add(gint32 postId) noexcept;

private:
  /** A set does not pay for a single posting: for it, the list itself is asked. */
  static constexpr int lookups_without_set = 1;

  void read() noexcept;

  int lookups_ = 0;
  bool cut_short_ = false;  // by an entry that is null
  std::unique_ptr<GHashTable, ReleaseWith<g_hash_table_destroy>> ids_;
};

}  // namespace velkor

#endif
