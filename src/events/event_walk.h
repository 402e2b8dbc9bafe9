/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Walking over a table of postings. */
#ifndef VELKOR_EVENTS_EVENT_WALK_H
#define VELKOR_EVENTS_EVENT_WALK_H

#include <velkor/zox_event.h>

#include "support/rw_lock.h"

namespace velkor {

/** Calls `visit(key, object)` for every entry, in the table's order; a null table has none. */
template <typename Visit>
void for_each_object(GHashTable *table, Visit visit) noexcept {
  if (table == nullptr)
    return;
  GHashTableIter entries;
  gpointer key = nullptr;
  gpointer object = nullptr;
  g_hash_table_iter_init(&entries, table);
  while (g_hash_table_iter_next(&entries, &key, &object) != FALSE)
    visit(key, static_cast<ZOXEventObject *>(object));
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
