/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/filter_pass.h"

#include <velkor/zox_groups.h>

#include "filter/prepared_filter.h"
#include "store/event_walk.h"
#include "store/eventlist_store.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

/** Makes a filter's newsgroups the global id set while it lives; null for none. */
class GroupIds {
public:
  explicit GroupIds(GSList *ids) noexcept : set_(ids != nullptr) {
    if (set_)
      zox_group_set_group_id_list(ids);
  }
  ~GroupIds() {
    if (set_)
      zox_group_unset_group_id_list();
  }
  GroupIds(const GroupIds &) = delete;
  GroupIds &operator=(const GroupIds &) = delete;

private:
  bool set_;
};

bool accepts(const ZoxFilter &filter, const PreparedFilter &prepared,
             const ZoxEvent &event) noexcept {
  if (filter.postId != 0)
    return static_cast<guint32>(event.postId) == filter.postId;
  return prepared.accepts(event);
}

}  // namespace

guint filter_entries(ZOXEventlist *list, const ZoxFilter &filter) noexcept {
  const WriteLock lock(list->lock);
  set_filtered(list, EventTable(new_event_table()));
  set_active_filter(list, OwnedFilter(zox_filter_duplicate(&filter)));
  const GroupIds ids(filter.groupIdList);
  const PreparedFilter prepared(filter);
  for_each_object(list->tree, [&](gpointer key, ZOXEventObject *object) {
    if (read_briefly(object->lock, [&] { return accepts(filter, prepared, *object->event); }))
      g_hash_table_insert(list->filtered, key, object);
  });
  return g_hash_table_size(list->filtered);
}

void add_to_filtered(ZOXEventlist *list, gint32 postId) noexcept {
  const WriteLock lock(list->lock);
  ZOXEventObject *object = find_object(list->tree, postId);
  if (object == nullptr)
    return;
  if (list->filtered == nullptr)  // the list was loaded meanwhile
    list->filtered = new_event_table();
  g_hash_table_insert(list->filtered, GINT_TO_POINTER(postId), object);
}

}  // namespace velkor
