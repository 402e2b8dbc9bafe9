/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Adding postings to the event list and removing them from it. */
#include <velkor/zox_eventlist.h>

#include <cstddef>
#include <cstdio>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_watchlist.h>

#include "core/changes.h"
#include "core/settings_table.h"
#include "filter/watched_ids.h"
#include "filter/watchers.h"
#include "filter/watchlist_entries.h"
#include "posting/event_record.h"
#include "posting/packed_event.h"
#include "store/event_walk.h"
#include "store/eventlist_store.h"
#include "support/assertion.h"
#include "support/clock.h"
#include "support/rw_lock.h"
#include "support/slist.h"

namespace velkor {
namespace {

/** Takes the objects of one merge into the list. */
class Merge {
public:
  /** @param log  receives what becomes of each posting; null if nobody wants to know */
  Merge(ZOXEventlist *list, MergeLog *log) noexcept : list_(list), log_(log) {}

  /* No other thread sees an object before it is in the list: its own lock is not needed. */

  /** Finds out which postings the watchers match: for this, nobody has to wait. */
  void test(const GSList *objects) noexcept {
    for (const ZOXEventObject *object : Items<const ZOXEventObject>(objects))
      hits_.push_back(watchers_.match(*object->event));
  }

  /** Takes the next of the objects tested. */
  void take(ZOXEventObject *object) noexcept {
    assert_held_for_writing(list_->lock);
    ZoxEvent &event = *object->event;
    const bool hit = hits_[taken_++];
    if (hit) {
      core->watcherNoHits = 0;
      event.watcherHit = 1;
    }
    const bool known = put_entry(list_, OwnedEventObject(object));
    const bool watched = known && watched_.contains(event.postId);
    if (watched) {
      note_watched_change();
      event.watchlistUpdated = 1;
    }
    if (log_ != nullptr)
      note(event, known, watched, hit);
  }

private:
  void note(const ZoxEvent &event, bool known, bool watched, bool hit) noexcept {
    const bool deleted = event.status == ZOX_STATUS_DELETED || event.status == ZOX_STATUS_REMOVED;
    log_->entries.push_back({event.postId, known, deleted, watched, hit});
    if (hit)
      log_->hits.push_back({event.postId, first_watcher_of(event)});
  }

  ZOXEventlist *const list_;
  MergeLog *const log_;
  Watchers watchers_;
  WatchedIds watched_;
  std::vector<bool> hits_;
  std::size_t taken_ = 0;
};

/** The post ids of all entries whose posting meets the condition. */
template <typename Condition>
std::vector<gint32> ids_where(ZOXEventlist *list, Condition condition) noexcept {
  assert_held(list->lock);
  std::vector<gint32> ids;
  for_each_held_event(list->tree, [&](gpointer key, const ZoxEvent &event) {
    if (condition(event))
      ids.push_back(GPOINTER_TO_INT(key));
  });
  return ids;
}

void remove_known_entry(ZOXEventlist *list, gint32 postId, int place) noexcept {
  if (!remove_entry(list, postId))
    std::printf("zox_eventlist:%i dit mag niet voorkomen!!\n", place);
}

/** The stamp from which on postings are kept; false when the setting is none of its values. */
bool find_age_limit(gint64 &limit) noexcept {
  const gint32 choice = core->config->verwijderPostsNaXDagen;
  if (static_cast<guint32>(choice) >= settings::retention_days.size()) {
    g_warning("Ongeldige waarde : core->config->verwijderPostsNaXDagen = %i\n", choice);
    return false;
  }
  const gint64 days = settings::retention_days[static_cast<guint32>(choice)];
  limit = current_time() - days * seconds_a_day;
  return true;
}

/**
 * Removes what is older, except for the watchlist; true when there was anything that old.
 * @param removed  receives the ids of what was removed
 */
bool remove_older(ZOXEventlist *list, gint64 limit, std::vector<gint32> &removed) noexcept {
  const WriteLock lock(list->lock);
  const auto ids = ids_where(list, [limit](const ZoxEvent &event) { return event.stamp < limit; });
  WatchedIds watched;
  for (const gint32 postId : ids) {
    if (watched.contains(postId))
      continue;
    remove_known_entry(list, postId, 702);
    removed.push_back(postId);
  }
  if (!removed.empty())
    tell_change(ZOX_CHANGE_LIST);
  return !ids.empty();
}

bool has_tree(ZOXEventlist *list) noexcept {
  const ReadLock lock(list->lock);
  return list->tree != nullptr;
}

/** Puts a copy into the list, into the object that is there if there is one. */
void put_copy(ZOXEventlist *list, const ZoxEvent &event) noexcept {
  assert_held_for_writing(list->lock);
  tell_change(ZOX_CHANGE_POSTING, event.postId);  // whoever is told waits for the lock
  ZOXEventObject *object = find_object(list->tree, event.postId);
  if (object == nullptr) {
    put_entry(list, new_object(pack(event)));
    return;
  }
  note_change(list, event.postId);
  zox_event_object_set_event(object, &event);
  if (zox_watchlist_is_in_list(static_cast<guint32>(event.postId)) != FALSE)
    note_watched_change();
}

}  // namespace

void change_or_add(ZOXEventlist *list, const ZoxEvent &known,
                   const std::function<void(ZoxEvent &)> &change) noexcept {
  const WriteLock lock(list->lock);
  ZOXEventObject *object = find_object(list->tree, known.postId);
  const OwnedEvent event(object == nullptr ? zox_event_duplicate(&known)
                                           : zox_event_object_get_event(object));
  change(*event);
  put_copy(list, *event);
}

void merge(ZOXEventlist *list, GSList *objects, ZoxEventlistProgress progress, gpointer userData,
           MergeLog *log) noexcept {
  constexpr guint32 step = 10;
  Merge merge(list, log);
  merge.test(objects);
  const WriteLock lock(list->lock);
  const guint32 total = g_slist_length(objects);
  guint32 number = 0;
  for (ZOXEventObject *object : Items<ZOXEventObject>(objects)) {
    ++number;
    if (progress != nullptr && number % step == 0)
      progress(total, number, userData);
    merge.take(object);
  }
  if (progress != nullptr)
    progress(total, total, userData);
  tell_change(ZOX_CHANGE_LIST);
}

std::vector<gint32> remove_aged(ZOXEventlist *list) noexcept {
  std::vector<gint32> removed;
  if (!has_tree(list))
    return removed;
  ZOX_ASSERT_IN(zox_eventlist_cleanup, core, "core");
  ZOX_ASSERT_IN(zox_eventlist_cleanup, core->config, "core->config");
  gint64 limit = 0;
  if (!find_age_limit(limit) || !remove_older(list, limit, removed))
    return removed;
  // What could not be saved must not be replaced by what the file still holds. Saving right here
  // keeps the file that another process sees in step with what was removed, whatever comes next; it
  // costs little, since most sections are copied.
  if (zox_eventlist_save(list) != 0)
    reload(list);
  return removed;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_eventlist_merge(ZOXEventlist *list, GSList *objects, ZoxEventlistProgress progress,
                         gpointer userData) {
  ZOX_ASSERT(core);
  merge(list, objects, progress, userData, nullptr);
}

void zox_eventlist_add_or_replace_event(ZOXEventlist *list, const ZoxEvent *event) {
  const WriteLock lock(list->lock);
  put_copy(list, *event);
}

void zox_eventlist_purge_deleted(ZOXEventlist *list) {
  const WriteLock lock(list->lock);
  const gint64 now = current_time();
  const auto ids = ids_where(list, [now](const ZoxEvent &event) {
    return event.status == ZOX_STATUS_REMOVED || is_long_deleted(event, now);
  });
  WatchedIds watched;
  for (const gint32 postId : ids) {
    if (watched.contains(postId))
      zox_watchlist_remove(postId);
    remove_known_entry(list, postId, 597);
  }
  if (!ids.empty())
    tell_change(ZOX_CHANGE_LIST);
}

void zox_eventlist_cleanup(ZOXEventlist *list) {
  remove_aged(list);
}

}  // extern "C"
