/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The entries of a table in the order of the cache file. */
#ifndef VELKOR_STORE_EVENT_ORDER_H
#define VELKOR_STORE_EVENT_ORDER_H

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "store/event_walk.h"
#include "store/known_posts.h"

namespace velkor {

struct OrderedEntry {
  gint32 id = 0;
  ZOXEventObject *object = nullptr;
};

/** The entries in the table's order. */
inline std::vector<OrderedEntry> entries_of(GHashTable *table) noexcept {
  std::vector<OrderedEntry> entries;
  entries.reserve(g_hash_table_size(table));
  GHashTableIter iterator;
  gpointer key = nullptr;
  gpointer object = nullptr;
  g_hash_table_iter_init(&iterator, table);
  while (g_hash_table_iter_next(&iterator, &key, &object) != FALSE)
    entries.push_back({GPOINTER_TO_INT(key), static_cast<ZOXEventObject *>(object)});
  return entries;
}

/**
 * The entries in turn, as EntryStream does for a table: what lies some steps ahead is on its way
 * into the processor's cache.
 */
template <typename Visit>
void for_each_entry(std::span<OrderedEntry> entries, Visit visit) noexcept {
  constexpr std::size_t object_distance = 8;
  constexpr std::size_t record_distance = 4;
  for (std::size_t number = 0; number < entries.size(); ++number) {
    if (number + object_distance < entries.size())
      prefetch_object(entries[number + object_distance].object);
    if (number + record_distance < entries.size())
      prefetch_record(entries[number + record_distance].object);
    visit(entries[number]);
  }
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
