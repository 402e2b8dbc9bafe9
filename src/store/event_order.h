/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The entries of a table in the order of the cache file. */
#ifndef VELKOR_STORE_EVENT_ORDER_H
#define VELKOR_STORE_EVENT_ORDER_H

#include <algorithm>
#include <span>
#include <vector>

#include "store/event_walk.h"
#include "store/known_posts.h"

namespace velkor {

struct OrderedEntry {
  gint32 id = 0;
  ZOXEventObject *object = nullptr;
};

/** The entries by rising id. */
inline std::vector<OrderedEntry> entries_in_order(GHashTable *table) noexcept {
  std::vector<OrderedEntry> entries;
  entries.reserve(g_hash_table_size(table));
  for_each_object(table, [&entries](gpointer key, ZOXEventObject *object) {
    entries.push_back({GPOINTER_TO_INT(key), object});
  });
  std::ranges::sort(entries, {}, &OrderedEntry::id);
  return entries;
}

/**
 * The entries that belong to each section, of which there is at least one: those from its first id
 * to before the next one's; what is below the first section belongs to it as well.
 */
inline std::vector<std::span<OrderedEntry>>
entries_of_sections(std::span<OrderedEntry> entries,
                    const std::vector<KnownSection> &sections) noexcept {
  std::vector<std::span<OrderedEntry>> ranges;
  ranges.reserve(sections.size());
  for (std::size_t number = 1; number <= sections.size(); ++number) {
    const auto end =
        number == sections.size()
            ? entries.end()
            : std::ranges::lower_bound(entries, sections[number].first_id, {}, &OrderedEntry::id);
    const auto count = static_cast<std::size_t>(end - entries.begin());
    ranges.push_back(entries.first(count));
    entries = entries.subspan(count);
  }
  return ranges;
}

}  // namespace velkor

#endif
