/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "events/event_table.h"

namespace velkor {

OwnedEventObject put_object(GHashTable *table, OwnedEventObject object) noexcept {
  const gint32 postId = object->event->postId;
  OwnedEventObject earlier = take_object(table, postId);
  g_hash_table_insert(table, GINT_TO_POINTER(postId), object.release());
  return earlier;
}

OwnedEventObject take_object(GHashTable *table, gint32 postId) noexcept {
  gpointer object = nullptr;
  g_hash_table_steal_extended(table, GINT_TO_POINTER(postId), nullptr, &object);
  return OwnedEventObject(static_cast<ZOXEventObject *>(object));
}

}  // namespace velkor
