/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a display document looks up for many postings, each of it once. */
#ifndef VELKOR_DISPLAY_LOOKUPS_H
#define VELKOR_DISPLAY_LOOKUPS_H

#include <array>
#include <optional>
#include <string>
#include <string_view>
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

/** The rows of the tag table for one tag. */
struct ShownTag {
  /** The row that names the tag's group; for an unknown tag, its only row. */
  std::string row;
  /** The row below another one of the group. */
  std::string continuation;
  /** The name of the group; null for an unknown tag. */
  const char *group = nullptr;
};

/** Serves one document; neither the tables nor the time zone change meanwhile. */
class DisplayLookups {
public:
  const ShownNewsgroup &newsgroup(guint32 id) noexcept;
  /** The tag of that code in the main category. */
  const ShownTag &tag(const ZoxString &code, gint32 category) noexcept;
  /** The local time in the form of zox_string_date(); none if there is no such date. */
  std::string_view date(gint64 seconds) noexcept;
  /** Whether the posting is on the watchlist. */
  bool watched(gint32 postId) noexcept { return watchlist_.contains(postId); }

private:
  GroupIndex groups_;
  std::unordered_map<guint32, ShownNewsgroup> newsgroups_;
  struct RecentTag {
    guint64 key = 0;
    const ShownTag *tag = nullptr;
  };
  std::array<RecentTag, 256> recent_tags_;               // by a hash of the key
  std::unordered_map<guint64, ShownTag> short_tags_;     // by code and category
  std::unordered_map<std::string, ShownTag> long_tags_;  // by category and code
  bool zone_read_ = false;
  std::array<char, 13> date_{};
  WatchedIds watchlist_;
};

}  // namespace velkor

#endif
