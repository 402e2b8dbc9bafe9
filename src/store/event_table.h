/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Tables of postings by post id, as the event list keeps them: no destroy functions. */
#ifndef VELKOR_STORE_EVENT_TABLE_H
#define VELKOR_STORE_EVENT_TABLE_H

#include <memory>
#include <utility>

#include <velkor/zox_event.h>

#include "posting/packed_event.h"
#include "support/owned.h"

namespace velkor {

using EventTable = std::unique_ptr<GHashTable, ReleaseWith<g_hash_table_destroy>>;

inline GHashTable *new_event_table() noexcept {
  return g_hash_table_new(g_direct_hash, nullptr);
}

inline ZOXEventObject *find_object(GHashTable *table, gint32 postId) noexcept {
  return static_cast<ZOXEventObject *>(g_hash_table_lookup(table, GINT_TO_POINTER(postId)));
}

/** Takes the entry out; null when there is none. */
inline OwnedEventObject take_object(GHashTable *table, gint32 postId) noexcept {
  gpointer object = nullptr;
  g_hash_table_steal_extended(table, GINT_TO_POINTER(postId), nullptr, &object);
  return OwnedEventObject(static_cast<ZOXEventObject *>(object));
}

/** Puts `object` under its post id; what stood there before is handed back with its reference. */
inline OwnedEventObject put_object(GHashTable *table, gint32 postId,
                                   OwnedEventObject object) noexcept {
  OwnedEventObject earlier = take_object(table, postId);
  g_hash_table_insert(table, GINT_TO_POINTER(postId), object.release());
  return earlier;
}
inline OwnedEventObject put_object(GHashTable *table, OwnedEventObject object) noexcept {
  const gint32 postId = object->event->postId;
  return put_object(table, postId, std::move(object));
}

}  // namespace velkor

#endif
