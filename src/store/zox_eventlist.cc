/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The event list as an object, and reading from it. */
#include <velkor/zox_eventlist.h>

#include <utility>

#include <velkor/zox_filter.h>

#include "posting/event_record.h"
#include "store/event_walk.h"
#include "store/eventlist_store.h"
#include "support/object_type.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

void init(ZOXEventlist &list) noexcept {
  rw_lock_init(list.lock);
  list.tree = new_event_table();
  list.filtered = nullptr;
  list.activeFilter = nullptr;
}

void release_contents(ZOXEventlist *list) noexcept {
  const WriteLock lock(list->lock);
  drop_tree(EventTable(std::exchange(list->tree, nullptr)));
  set_filtered(list, nullptr);
  set_active_filter(list, nullptr);
  release_kept(list);
}

void finalize(ZOXEventlist &list) noexcept {
  release_contents(&list);
  rw_lock_free(list.lock);
}

void call_for_copies(GHashTable *table, ZoxEventlistFunc func, gpointer userData) noexcept {
  for_each_object(table, [func, userData](gpointer key, ZOXEventObject *object) {
    const OwnedEvent copy(zox_event_object_get_event(object));
    func(key, copy.get(), userData);
  });
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

GType zox_eventlist_get_type(void) {
  static const GType type = register_object_type<ZOXEventlist, init, finalize>("ZOXEventlist");
  return type;
}

ZOXEventlist *zox_eventlist_new(void) {
  return static_cast<ZOXEventlist *>(g_object_new(zox_eventlist_get_type(), nullptr));
}

void zox_eventlist_destroy(ZOXEventlist *list) {
  unref_object(list);
}

ZoxEvent *zox_eventlist_lookup_id(ZOXEventlist *list, gint32 postId) {
  const ReadLock lock(list->lock);
  ZOXEventObject *object = list->tree == nullptr ? nullptr : find_object(list->tree, postId);
  return object == nullptr ? nullptr : zox_event_object_get_event(object);
}

guint32 zox_eventlist_get_count(ZOXEventlist *list, gint32 filtered) {
  const ReadLock lock(list->lock);
  GHashTable *table = filtered != 0 ? list->filtered : list->tree;
  return table == nullptr ? 0 : g_hash_table_size(table);
}

ZoxFilter *zox_eventlist_get_filter(ZOXEventlist *list) {
  const ReadLock lock(list->lock);
  return list->activeFilter == nullptr ? nullptr : zox_filter_duplicate(list->activeFilter);
}

ZoxEvent *zox_eventlist_get_first_filtered_event(ZOXEventlist *list) {
  const WriteLock lock(list->lock);
  ZOXEventObject *last = nullptr;
  for_each_object(list->filtered, [&last](gpointer, ZOXEventObject *object) { last = object; });
  return last == nullptr ? nullptr : zox_event_object_get_event(last);
}

void zox_eventlist_foreach(ZOXEventlist *list, gint32 filtered, gint32 readOnly,
                           ZoxEventlistFunc func, gpointer userData) {
  const auto walk = [=] {
    call_for_copies(filtered != 0 ? list->filtered : list->tree, func, userData);
  };
  if (readOnly != 0) {
    const ReadLock lock(list->lock);
    walk();
  } else {
    const WriteLock lock(list->lock);
    walk();
  }
}

void zox_eventlist_visit(ZOXEventlist *list, gint32 filtered, ZoxEventlistVisitor visitor,
                         gpointer userData) {
  const ReadLock lock(list->lock);
  for_each_held_event(filtered != 0 ? list->filtered : list->tree,
                      [=](gpointer, const ZoxEvent &event) { visitor(&event, userData); });
}

}  // extern "C"
