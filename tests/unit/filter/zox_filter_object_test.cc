/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filter.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/support/filter_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using test::filter_of;
using test::posting;
using Object = OwnedObject<ZOXFilterObject>;

class ZoxFilterObject : public test::FilterTest {
protected:
  Object object{zox_filter_object_new()};
};

TEST_F(ZoxFilterObject, TypeDerivesDirectlyFromTheBaseClass) {
  EXPECT_STREQ(g_type_name(zox_filter_object_get_type()), "ZOXFilterObject");
  EXPECT_EQ(g_type_parent(zox_filter_object_get_type()), G_TYPE_OBJECT);
  EXPECT_EQ(zox_filter_object_get_type(), zox_filter_object_get_type());
}

TEST_F(ZoxFilterObject, HoldsAnEmptyFilterAtFirst) {
  const OwnedFilter held(zox_filter_object_get_filter(object.get()));
  EXPECT_EQ(held->cat, -1);
  EXPECT_EQ(held->sCat, -1);
  EXPECT_EQ(held->name, nullptr);
  EXPECT_EQ(zox_filter_object_get_filter_postid(object.get()), 0U);
}

TEST_F(ZoxFilterObject, KeepsACopyOfWhatIsSet) {
  {
    const OwnedFilter filter = filter_of(2, "een");
    filter->postId = 12;
    zox_filter_object_set_filter(object.get(), filter.get());
    replace_string(filter->name, zox_string_new("anders"));
  }
  const OwnedFilter held(zox_filter_object_get_filter(object.get()));
  EXPECT_STREQ(held->name->str, "een");
  EXPECT_EQ(held->cat, 2);
  EXPECT_EQ(zox_filter_object_get_filter_postid(object.get()), 12U);
}

TEST_F(ZoxFilterObject, HandsOutCopies) {
  zox_filter_object_set_filter(object.get(), filter_of(2, "een").get());
  const OwnedFilter first(zox_filter_object_get_filter(object.get()));
  replace_string(first->name, zox_string_new("anders"));
  const OwnedFilter second(zox_filter_object_get_filter(object.get()));
  EXPECT_STREQ(second->name->str, "een");
}

TEST_F(ZoxFilterObject, TestsWithTheFilterHeld) {
  keep({0, 1});
  const OwnedEvent event = posting(0);
  EXPECT_TRUE(zox_filter_object_accepts(object.get(), event.get(), 0));
  zox_filter_object_set_filter(object.get(), filter_of(1).get());
  EXPECT_FALSE(zox_filter_object_accepts(object.get(), event.get(), 0));
}

TEST_F(ZoxFilterObject, TestsWithTheGroupModeGiven) {
  keep({0});
  core->config->groupFilterList = zox_splitted_list_split("3");
  const OwnedFilter filter(zox_filter_new_filter());
  filter->groupIdList = zox_splitted_list_split("3");
  zox_filter_object_set_filter(object.get(), filter.get());
  const test::NewsgroupIdSet set("4");
  const OwnedEvent event = posting(0);
  event->groups = zox_splitted_list_split("3");
  EXPECT_TRUE(zox_filter_object_accepts(object.get(), event.get(), 0));
  EXPECT_FALSE(zox_filter_object_accepts(object.get(), event.get(), 1));
}

TEST_F(ZoxFilterObject, DestroyDropsOneReference) {
  g_object_ref(object.get());
  zox_filter_object_destroy(object.get());
  EXPECT_EQ(zox_filter_object_get_filter_postid(object.get()), 0U);
}

TEST_F(ZoxFilterObject, RejectsOtherInstances) {
  const OwnedObject<GObject> other(G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr)));
  auto *wrong = reinterpret_cast<ZOXFilterObject *>(other.get());
  const test::LogCapture log;
  zox_filter_object_set_filter(wrong, filter_of(1).get());
  EXPECT_EQ(zox_filter_object_get_filter(wrong), nullptr);
  EXPECT_EQ(zox_filter_object_get_filter_postid(wrong), 0U);
  EXPECT_FALSE(zox_filter_object_accepts(wrong, posting(0).get(), 0));
  zox_filter_object_destroy(wrong);
  zox_filter_object_destroy(nullptr);
  EXPECT_EQ(log.criticals().size(), 6U);
}

TEST_F(ZoxFilterObject, ReadersNeverSeeAFilterThatIsBeingReplaced) {
  constexpr int rounds = 300;
  const std::vector<OwnedFilter> filters = [] {
    std::vector<OwnedFilter> made;
    made.push_back(filter_of(1, "een"));
    made.push_back(filter_of(2, "twee"));
    return made;
  }();
  zox_filter_object_set_filter(object.get(), filters.front().get());
  const auto write = [&] {
    for (int round = 0; round < rounds; ++round)
      zox_filter_object_set_filter(object.get(), filters.at(round % 2 == 0 ? 1 : 0).get());
  };
  const auto read = [&] {
    for (int round = 0; round < rounds; ++round) {
      const OwnedFilter held(zox_filter_object_get_filter(object.get()));
      EXPECT_STREQ(held->name->str, held->cat == 1 ? "een" : "twee");
    }
  };
  std::thread writer(write);
  std::thread reader(read);
  read();
  writer.join();
  reader.join();
}

}  // namespace
}  // namespace velkor
