/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/eventlist_store.h"

#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "store/event_walk.h"
#include "support/object_type.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

struct Kept {
  std::vector<OwnedEventObject> objects;
  std::vector<OwnedFilter> filters;
  /** The ids of entries that changed while a table is made to replace the list's. */
  std::optional<std::unordered_set<gint32>> changed;

  static void release(gpointer kept) {
    const std::unique_ptr<Kept> owned(static_cast<Kept *>(kept));
  }
};

GQuark quark_of_kept() noexcept {
  static const GQuark quark = g_quark_from_static_string("velkor-eventlist-kept");
  return quark;
}

Kept &kept_of(ZOXEventlist *list) noexcept {
  auto *kept = static_cast<Kept *>(g_object_get_qdata(&list->parent, quark_of_kept()));
  if (kept == nullptr) {
    kept = std::make_unique<Kept>().release();
    g_object_set_qdata_full(&list->parent, quark_of_kept(), kept, Kept::release);
  }
  return *kept;
}

/** Lets go of an object that left the list. */
void part_with(ZOXEventlist *list, OwnedEventObject object) noexcept {
  const gint32 postId = object->event->postId;
  if (list->filtered != nullptr && find_object(list->filtered, postId) == object.get())
    kept_of(list).objects.push_back(std::move(object));
}

}  // namespace

void drop_tree(EventTable eventTree) noexcept {
  if (!eventTree) {
    g_return_if_fail_warning(G_LOG_DOMAIN, "zox_eventlist_tree_free", "eventTree != NULL");
    return;
  }
  for_each_object(eventTree.get(), [](gpointer, ZOXEventObject *object) { unref_object(object); });
}

void note_changes(ZOXEventlist *list) noexcept {
  const WriteLock lock(list->lock);
  kept_of(list).changed.emplace();
}

void forget_changes(ZOXEventlist *list) noexcept {
  const WriteLock lock(list->lock);
  kept_of(list).changed.reset();
}

void note_change(ZOXEventlist *list, gint32 postId) noexcept {
  assert_held_for_writing(list->lock);
  if (auto &changed = kept_of(list).changed)
    changed->insert(postId);
}

EventTable replace_tree(ZOXEventlist *list, EventTable tree) noexcept {
  assert_held_for_writing(list->lock);
  const auto changed = std::exchange(kept_of(list).changed, std::nullopt);
  for (const gint32 postId : changed.value_or(std::unordered_set<gint32>())) {
    take_object(tree.get(), postId);
    ZOXEventObject *object = list->tree == nullptr ? nullptr : find_object(list->tree, postId);
    if (object != nullptr)
      put_object(tree.get(), OwnedEventObject(static_cast<ZOXEventObject *>(g_object_ref(object))));
  }
  return EventTable(std::exchange(list->tree, tree.release()));
}

void set_filtered(ZOXEventlist *list, EventTable filtered) noexcept {
  assert_held_for_writing(list->lock);
  const EventTable earlier(std::exchange(list->filtered, filtered.release()));
  if (earlier)
    kept_of(list).objects.clear();
}

void set_active_filter(ZOXEventlist *list, OwnedFilter filter) noexcept {
  assert_held_for_writing(list->lock);
  if (ZoxFilter *earlier = std::exchange(list->activeFilter, filter.release()))
    kept_of(list).filters.emplace_back(earlier);
}

void release_kept(ZOXEventlist *list) noexcept {
  assert_held_for_writing(list->lock);
  g_object_set_qdata(&list->parent, quark_of_kept(), nullptr);
}

bool put_entry(ZOXEventlist *list, OwnedEventObject object) noexcept {
  note_change(list, object->event->postId);
  OwnedEventObject earlier = put_object(list->tree, std::move(object));
  if (!earlier)
    return false;
  part_with(list, std::move(earlier));
  return true;
}

bool remove_entry(ZOXEventlist *list, gint32 postId) noexcept {
  note_change(list, postId);
  OwnedEventObject object = take_object(list->tree, postId);
  if (!object)
    return false;
  part_with(list, std::move(object));
  return true;
}

}  // namespace velkor
