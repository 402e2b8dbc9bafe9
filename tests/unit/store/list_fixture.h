/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An event list in a core with categories, for the tests of the store. */
#ifndef VELKOR_TESTS_UNIT_STORE_LIST_FIXTURE_H
#define VELKOR_TESTS_UNIT_STORE_LIST_FIXTURE_H

#include <ctime>
#include <map>
#include <set>

#include <velkor/zox_eventlist.h>

#include "store/event_table.h"
#include "support/slist.h"
#include "tests/support/filter_fixture.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor::test {

inline constexpr gint64 day = 86400;

inline gint64 days_ago(gint64 days) {
  return std::time(nullptr) - days * day;
}

/** A basic posting of a state that was changed so many seconds ago. */
inline OwnedEvent event_in_state(gint32 postId, gint32 status, gint64 seconds_since_change) {
  OwnedEvent event = basic_event(postId);
  event->status = status;
  event->updated = std::time(nullptr) - seconds_since_change;
  return event;
}

/** An object as the reader of postings makes it; the caller's reference. */
inline ZOXEventObject *object_of(const ZoxEvent &event) {
  ZOXEventObject *object = zox_event_object_new();
  zox_event_object_set_event(object, &event);
  return object;
}

/** Merges copies of these postings. */
inline void merge(ZOXEventlist *list, std::initializer_list<const ZoxEvent *> events,
                  ZoxEventlistProgress progress = nullptr, gpointer userData = nullptr) {
  GSList *objects = nullptr;
  for (const ZoxEvent *event : events)
    objects = g_slist_append(objects, object_of(*event));
  zox_eventlist_merge(list, objects, progress, userData);
  g_slist_free(objects);
}

/** What a walk over the list meets: the postings described, by key. */
inline std::map<gint32, std::string> contents(ZOXEventlist *list, gint32 filtered = 0) {
  std::map<gint32, std::string> found;
  zox_eventlist_foreach(
      list, filtered, 1,
      [](gpointer key, ZoxEvent *event, gpointer data) {
        (*static_cast<std::map<gint32, std::string> *>(data))[GPOINTER_TO_INT(key)] =
            describe(*event);
        return 0;
      },
      &found);
  return found;
}

inline std::set<gint32> ids(ZOXEventlist *list, gint32 filtered = 0) {
  std::set<gint32> found;
  for (const auto &[id, text] : contents(list, filtered))
    found.insert(id);
  return found;
}

/** `core->eventlist`, empty, with the four main categories kept; all postings count as old. */
class EventlistTest : public FilterTest {
protected:
  EventlistTest() : list(zox_eventlist_new()) {
    keep({0, 1, 2, 3});
    core->eventlist = list;
    core->config->prevCheck = G_MAXINT64;
  }

  void add(const OwnedEvent &event) { zox_eventlist_add_or_replace_event(list, event.get()); }

  [[nodiscard]] std::string held(gint32 postId) {
    const OwnedEvent event(zox_eventlist_lookup_id(list, postId));
    return event ? describe(*event) : "nothing";
  }

  ZOXEventlist *const list;
};

}  // namespace velkor::test

#endif
