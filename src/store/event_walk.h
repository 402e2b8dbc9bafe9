/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Walking over a table of postings. */
#ifndef VELKOR_STORE_EVENT_WALK_H
#define VELKOR_STORE_EVENT_WALK_H

#include <array>
#include <atomic>
#include <cstddef>

#include <velkor/zox_event.h>

#include "support/rw_lock.h"

namespace velkor {

inline void prefetch(const void *begin, std::size_t size) noexcept {
  constexpr std::size_t cache_line = 64;
  const auto *bytes = static_cast<const char *>(begin);
  for (std::size_t offset = 0; offset < size; offset += cache_line)
    __builtin_prefetch(bytes + offset);
}

/** Sends an object on its way into the processor's cache. */
inline void prefetch_object(const ZOXEventObject *object) noexcept {
  prefetch(object, sizeof(ZOXEventObject));
}

/**
 * The same for the record in an object; null has none. Nothing is read through the record's
 * address, so that it may be outdated or even loose.
 */
inline void prefetch_record(ZOXEventObject *object) noexcept {
  constexpr std::size_t common_record_size = 448;
  if (object != nullptr)
    prefetch(std::atomic_ref(object->event).load(std::memory_order_relaxed), common_record_size);
}

/**
 * The entries of a table in its order, each on its way into the processor's cache some steps
 * before its turn: entries lie all over the memory, and to wait for each of them would take longer
 * than what is done with most.
 */
class EntryStream {
public:
  struct Entry {
    gpointer key = nullptr;
    ZOXEventObject *object = nullptr;
  };

  explicit EntryStream(GHashTable *table) noexcept : left_(g_hash_table_size(table)) {
    g_hash_table_iter_init(&entries_, table);
    for (Entry &entry : ahead_)
      entry = fetch_object();
  }

  /** The next entry; one without an object after the last. */
  Entry next() noexcept {
    const Entry entry = ahead_[turn_];
    ahead_[turn_] = fetch_object();
    prefetch_record(ahead_[(turn_ + ahead_.size() / 2) % ahead_.size()].object);
    turn_ = (turn_ + 1) % ahead_.size();
    return entry;
  }

private:
  Entry fetch_object() noexcept {
    if (left_ == 0)
      return {};
    --left_;
    Entry entry;
    gpointer object = nullptr;
    g_hash_table_iter_next(&entries_, &entry.key, &object);
    entry.object = static_cast<ZOXEventObject *>(object);
    prefetch_object(entry.object);
    return entry;
  }

  GHashTableIter entries_;
  guint left_;
  std::array<Entry, 8> ahead_;
  std::size_t turn_ = 0;
};

/** Calls `visit(key, object)` for every entry, in the table's order; a null table has none. */
template <typename Visit>
void for_each_object(GHashTable *table, Visit visit) noexcept {
  if (table == nullptr)
    return;
  EntryStream stream(table);
  for (auto entry = stream.next(); entry.object != nullptr; entry = stream.next())
    visit(entry.key, entry.object);
}

/** Calls `visit(key, posting)` for every entry, holding the entry's lock for reading meanwhile. */
template <typename Visit>
void for_each_held_event(GHashTable *table, Visit visit) noexcept {
  for_each_object(table, [&visit](gpointer key, ZOXEventObject *object) {
    const ReadLock lock(object->lock);
    visit(key, const_cast<const ZoxEvent &>(*object->event));
  });
}

}  // namespace velkor

#endif
