/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_eventlist.h>

#include <gmock/gmock.h>

#include <velkor/zox_string.h>

#include "tests/support/log_capture.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::basic_event;
using test::contents;
using test::describe;
using testing::ElementsAre;

class ZoxEventlist : public test::EventlistTest {};

TEST_F(ZoxEventlist, TypeDerivesDirectlyFromGObject) {
  EXPECT_STREQ(g_type_name(zox_eventlist_get_type()), "ZOXEventlist");
  EXPECT_EQ(g_type_parent(zox_eventlist_get_type()), G_TYPE_OBJECT);
  GTypeQuery query;
  g_type_query(zox_eventlist_get_type(), &query);
  EXPECT_EQ(query.instance_size, sizeof(ZOXEventlist));
}

TEST_F(ZoxEventlist, NewListIsEmpty) {
  ASSERT_NE(list->tree, nullptr);
  EXPECT_EQ(list->filtered, nullptr);
  EXPECT_EQ(list->activeFilter, nullptr);
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 0U);
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 0U);
  EXPECT_EQ(zox_eventlist_get_filter(list), nullptr);
  EXPECT_EQ(zox_eventlist_get_first_filtered_event(list), nullptr);
  EXPECT_EQ(zox_eventlist_lookup_id(list, 1), nullptr);
}

TEST_F(ZoxEventlist, LookupGivesACopy) {
  add(test::full_event(5));
  EXPECT_EQ(held(5), describe(*test::full_event(5)));
  {
    const OwnedEvent copy(zox_eventlist_lookup_id(list, 5));
    g_string_assign(copy->title, "veranderd");
    copy->status = -3;
  }
  EXPECT_EQ(held(5), describe(*test::full_event(5)));
  EXPECT_EQ(held(6), "nothing");
}

TEST_F(ZoxEventlist, KeysMayBeNegative) {
  add(basic_event(-1));
  add(basic_event(G_MININT32));
  EXPECT_NE(held(-1), "nothing");
  EXPECT_NE(held(G_MININT32), "nothing");
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 2U);
}

TEST_F(ZoxEventlist, AddCopiesAndReplaceUsesTheSameEntry) {
  const OwnedEvent event = basic_event(5, "eerst");
  add(event);
  ZOXEventObject *object = find_object(list->tree, 5);
  g_string_assign(event->title, "daarna");
  EXPECT_EQ(held(5), describe(*basic_event(5, "eerst")));
  add(event);
  EXPECT_EQ(held(5), describe(*basic_event(5, "daarna")));
  EXPECT_EQ(find_object(list->tree, 5), object);
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 1U);
}

TEST_F(ZoxEventlist, ForeachMeetsEveryPostingOnce) {
  add(basic_event(1));
  add(basic_event(2));
  for (const gint32 readOnly : {0, 1}) {
    std::vector<gint32> keys;
    zox_eventlist_foreach(
        list, 0, readOnly,
        [](gpointer key, ZoxEvent *event, gpointer data) {
          EXPECT_EQ(GPOINTER_TO_INT(key), event->postId);
          g_string_append(event->title, " en meer");  // it is the callback's copy
          static_cast<std::vector<gint32> *>(data)->push_back(event->postId);
          return 1;
        },
        &keys);
    EXPECT_THAT(keys, testing::UnorderedElementsAre(1, 2));
  }
  EXPECT_EQ(held(1), describe(*basic_event(1)));
}

TEST_F(ZoxEventlist, VisitMeetsEveryPostingItself) {
  for (const gint32 id : {1, 2, 3})
    add(basic_event(id));
  list->filtered = new_event_table();
  put_object(list->filtered, OwnedEventObject(find_object(list->tree, 2)));
  std::map<gint32, const ZoxEvent *> visited;
  const auto note = [](const ZoxEvent *event, gpointer data) {
    (*static_cast<std::map<gint32, const ZoxEvent *> *>(data))[event->postId] = event;
  };
  zox_eventlist_visit(list, 0, note, &visited);
  EXPECT_EQ(visited.size(), 3U);
  for (const auto &[id, event] : visited)
    EXPECT_EQ(event, find_object(list->tree, id)->event);
  visited.clear();
  zox_eventlist_visit(list, 1, note, &visited);
  ASSERT_EQ(visited.size(), 1U);
  EXPECT_TRUE(visited.contains(2));
}

TEST_F(ZoxEventlist, VisitOfTheFilteredSetBeforeAFilterMeetsNothing) {
  add(basic_event(1));
  int visits = 0;
  zox_eventlist_visit(
      list, 1, [](const ZoxEvent *, gpointer data) { ++*static_cast<int *>(data); }, &visits);
  EXPECT_EQ(visits, 0);
}

TEST_F(ZoxEventlist, ForeachOfTheFilteredSetBeforeAFilterMeetsNothing) {
  add(basic_event(1));
  EXPECT_TRUE(contents(list, 1).empty());
}

TEST_F(ZoxEventlist, CallbacksMayLookThingsUp) {
  add(basic_event(1));
  for (const gint32 readOnly : {0, 1}) {
    zox_eventlist_foreach(
        list, 0, readOnly,
        [](gpointer, ZoxEvent *event, gpointer data) {
          auto *walked = static_cast<ZOXEventlist *>(data);
          const OwnedEvent again(zox_eventlist_lookup_id(walked, event->postId));
          EXPECT_EQ(describe(*again), describe(*event));
          EXPECT_EQ(zox_eventlist_get_count(walked, 0), 1U);
          return 0;
        },
        list);
  }
}

TEST_F(ZoxEventlist, EndsWithItsLastReference) {
  ZOXEventlist *other = zox_eventlist_new();
  gpointer watched = other;
  g_object_add_weak_pointer(&other->parent, &watched);
  zox_eventlist_add_or_replace_event(other, basic_event(1).get());
  ZOXEventObject *object = find_object(other->tree, 1);
  g_object_ref(object);
  zox_eventlist_destroy(other);
  EXPECT_EQ(watched, nullptr);
  EXPECT_EQ(object->parent.ref_count, 1U);
  g_object_unref(object);
}

TEST_F(ZoxEventlist, ListWithoutATableComplainsAtItsEnd) {
  const test::LogCapture log;
  ZOXEventlist *other = zox_eventlist_new();
  g_hash_table_destroy(std::exchange(other->tree, nullptr));
  EXPECT_EQ(zox_eventlist_get_count(other, 0), 0U);
  EXPECT_EQ(zox_eventlist_lookup_id(other, 1), nullptr);
  zox_eventlist_destroy(other);
  EXPECT_THAT(log.criticals(),
              ElementsAre("zox_eventlist_tree_free: assertion 'eventTree != NULL' failed"));
}

}  // namespace
}  // namespace velkor
