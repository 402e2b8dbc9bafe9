/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a display document looks up for many postings, each of it once. */
#ifndef VELKOR_DISPLAY_LOOKUPS_H
#define VELKOR_DISPLAY_LOOKUPS_H

#include <optional>
#include <string>
#include <unordered_map>

#include <velkor/zox_tags.h>

#include "filter/watched_ids.h"
#include "taxonomy/group_index.h"

namespace velkor {

/** What the display shows of a newsgroup. */
struct ShownNewsgroup {
  /** Whether there is such a newsgroup at all. */
  bool known = false;
  /** Its short name; none when it has no name. */
  std::optional<std::string> name;
};

/** Serves one document; the tables do not change meanwhile. */
class DisplayLookups {
public:
  const ShownNewsgroup &newsgroup(guint32 id) noexcept;
  /** The tag of that code and main category, or null. */
  const ZoxTag *tag(const ZoxString &code, gint32 category) noexcept;
  /** Whether the posting is on the watchlist. */
  bool watched(gint32 postId) noexcept { return watchlist_.contains(postId); }

private:
  GroupIndex groups_;
  std::unordered_map<guint32, ShownNewsgroup> newsgroups_;
  std::unordered_map<std::string, const ZoxTag *> tags_;  // by category and code
  std::string tagKey_;
  WatchedIds watchlist_;
};

}  // namespace velkor

#endif
