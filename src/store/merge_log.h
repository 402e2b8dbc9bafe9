/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a merge did to each posting, for who tells the user about it. */
#ifndef VELKOR_STORE_MERGE_LOG_H
#define VELKOR_STORE_MERGE_LOG_H

#include <string>
#include <vector>

#include <glib.h>

namespace velkor {

struct MergeLog {
  struct Entry {
    gint32 postId;
    bool known;    // the list held it already
    bool deleted;  // it came as deleted
    bool watched;  // it was replaced and is on the watchlist
    bool hit;      // a watcher matched it; its text is in `watchers`
  };
  /** In the order of the merge; a posting that came twice has two. */
  std::vector<Entry> entries;
  struct Hit {
    gint32 postId;
    std::string watcher;
  };
  std::vector<Hit> hits;
};

}  // namespace velkor

#endif
