/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <velkor/zox_event.h>

#include "posting/packed_event.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

using test::describe;
using test::full_event;

TEST(ZoxEventObjectTest, TypeDerivesDirectlyFromGObject) {
  const GType type = zox_event_object_get_type();
  EXPECT_STREQ(g_type_name(type), "ZOXEventObject");
  EXPECT_EQ(g_type_parent(type), G_TYPE_OBJECT);
  EXPECT_EQ(zox_event_object_get_type(), type);
  GTypeQuery query;
  g_type_query(type, &query);
  EXPECT_EQ(query.instance_size, sizeof(ZOXEventObject));
  EXPECT_EQ(query.class_size, sizeof(GObjectClass));
}

TEST(ZoxEventObjectTest, StartsWithAFreshRecord) {
  const OwnedEventObject object(zox_event_object_new());
  const OwnedEvent held(zox_event_object_get_event(object.get()));
  const OwnedEvent fresh(zox_event_new());
  EXPECT_EQ(describe(*held), describe(*fresh));
}

TEST(ZoxEventObjectTest, HoldsACopyOfTheRecordSetLast) {
  const OwnedEventObject object(zox_event_object_new());
  const OwnedEvent first = full_event(1);
  zox_event_object_set_event(object.get(), first.get());
  OwnedEvent second = full_event(2);
  zox_event_object_set_event(object.get(), second.get());
  const std::string expected = describe(*second);
  second.reset();
  const OwnedEvent held(zox_event_object_get_event(object.get()));
  EXPECT_EQ(describe(*held), expected);
}

TEST(ZoxEventObjectTest, MayBeGivenItsOwnRecord) {
  const OwnedEventObject object(zox_event_object_new());
  zox_event_object_set_event(object.get(), full_event(1).get());
  zox_event_object_set_event(object.get(), object->event);
  const OwnedEvent held(zox_event_object_get_event(object.get()));
  EXPECT_EQ(describe(*held), describe(*full_event(1)));
}

TEST(ZoxEventObjectTest, CopiesAreIndependentOfTheObject) {
  const OwnedEventObject object(zox_event_object_new());
  zox_event_object_set_event(object.get(), full_event().get());
  {
    const OwnedEvent copy(zox_event_object_get_event(object.get()));
    g_string_append(copy->title, " en meer dan er ooit in het blok van het object zou passen");
    zox_splitted_list_free(&copy->tags);
    copy->postId = 8;
  }
  const OwnedEvent held(zox_event_object_get_event(object.get()));
  EXPECT_EQ(describe(*held), describe(*full_event()));
}

TEST(ZoxEventObjectTest, LivesAsLongAsItsReferences) {
  gpointer watched = zox_event_object_new();
  auto *object = static_cast<ZOXEventObject *>(watched);
  g_object_add_weak_pointer(static_cast<GObject *>(watched), &watched);
  g_object_ref(object);
  zox_event_object_destroy(object);
  EXPECT_NE(watched, nullptr);
  zox_event_object_destroy(object);
  EXPECT_EQ(watched, nullptr);
}

TEST(ZoxEventObjectTest, ReadersAndWritersTakeTurns) {
  const OwnedEventObject object(zox_event_object_new());
  zox_event_object_set_event(object.get(), full_event(1).get());
  std::atomic<int> mixed = 0;
  std::vector<std::thread> threads;
  for (const gint32 id : {1, 2}) {
    threads.emplace_back([&, id] {
      const OwnedEvent own = full_event(id);
      for (int round = 0; round < 300; ++round)
        zox_event_object_set_event(object.get(), own.get());
    });
    threads.emplace_back([&] {
      const std::string one = describe(*full_event(1));
      const std::string two = describe(*full_event(2));
      for (int round = 0; round < 300; ++round) {
        const OwnedEvent copy(zox_event_object_get_event(object.get()));
        const std::string found = describe(*copy);
        mixed += found != one && found != two ? 1 : 0;
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_EQ(mixed, 0);
}

}  // namespace
}  // namespace velkor
