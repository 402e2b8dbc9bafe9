/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The filtered set of the event list. */
#include <gmock/gmock.h>

#include <velkor/zox_groups.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "tests/support/log_capture.h"
#include "tests/support/stub_server.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::basic_event;
using test::contents;
using test::describe;
using test::ids;
using testing::ElementsAre;

class ZoxEventlistFilter : public test::EventlistTest {
protected:
  ZoxEventlistFilter() {
    core->config->username = zox_string_new("gebruiker");
    zox_http_set_hosts(server.host().c_str(), server.host().c_str());
    for (gint32 id = 1; id <= 6; ++id) {
      const OwnedEvent event = basic_event(id, id % 2 == 0 ? "even getal" : "oneven getal");
      event->cat = id % 3;
      add(event);
    }
  }
  ~ZoxEventlistFilter() override { zox_http_set_hosts(nullptr, nullptr); }

  static OwnedFilter title_filter(const char *words) {
    OwnedFilter filter(zox_filter_new_filter());
    filter->titleSearch = zox_string_new(words);
    return filter;
  }

  static OwnedFilter post_filter(guint32 postId) {
    OwnedFilter filter(zox_filter_new_filter());
    filter->postId = postId;
    return filter;
  }

  void apply(const OwnedFilter &filter) { zox_eventlist_apply_filter(list, filter.get()); }

  test::StubServer server;
};

TEST_F(ZoxEventlistFilter, KeepsWhatTheFilterAccepts) {
  apply(title_filter("ONEVEN"));
  EXPECT_THAT(ids(list, 1), ElementsAre(1, 3, 5));
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 3U);
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 6U);
  apply(test::filter_of(1));
  EXPECT_THAT(ids(list, 1), ElementsAre(1, 4));
}

TEST_F(ZoxEventlistFilter, EntriesAreTheListsOwnWithoutReferences) {
  apply(title_filter("ONEVEN"));
  ZOXEventObject *object = find_object(list->tree, 1);
  EXPECT_EQ(find_object(list->filtered, 1), object);
  EXPECT_EQ(object->parent.ref_count, 1U);
}

TEST_F(ZoxEventlistFilter, KeepsACopyOfTheFilter) {
  {
    const OwnedFilter filter = title_filter("oneven");
    apply(filter);
    EXPECT_NE(list->activeFilter, filter.get());
  }
  const OwnedFilter held(zox_eventlist_get_filter(list));
  ASSERT_NE(held, nullptr);
  EXPECT_NE(held.get(), list->activeFilter);
  EXPECT_STREQ(held->titleSearch->str, "oneven");
}

TEST_F(ZoxEventlistFilter, EarlierFilterStaysReadable) {
  apply(title_filter("oneven"));
  const ZoxFilter *earlier = list->activeFilter;
  apply(title_filter("even"));
  EXPECT_STREQ(earlier->titleSearch->str, "oneven");
  EXPECT_STREQ(list->activeFilter->titleSearch->str, "even");
}

TEST_F(ZoxEventlistFilter, MayBeGivenItsOwnFilter) {
  apply(title_filter("oneven"));
  zox_eventlist_apply_filter(list, list->activeFilter);
  EXPECT_THAT(ids(list, 1), ElementsAre(1, 3, 5));
}

TEST_F(ZoxEventlistFilter, FirstFilteredPostingIsTheLastOfTheWalk) {
  apply(title_filter("oneven"));
  gint32 last = 0;
  zox_eventlist_foreach(
      list, 1, 1,
      [](gpointer key, ZoxEvent *, gpointer place) {
        *static_cast<gint32 *>(place) = GPOINTER_TO_INT(key);
        return 0;
      },
      &last);
  const OwnedEvent first(zox_eventlist_get_first_filtered_event(list));
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->postId, last);
  EXPECT_EQ(describe(*first), held(last));
  apply(title_filter("komt niet voor"));
  EXPECT_EQ(zox_eventlist_get_first_filtered_event(list), nullptr);
}

TEST_F(ZoxEventlistFilter, NewsgroupsOfTheGivenFilterAreTheIdSetMeanwhile) {
  const OwnedEvent event = basic_event(9);
  zox_splitted_list_free(&event->groups);
  event->groups = zox_splitted_list_split("|77|");
  add(event);
  const OwnedFilter filter(zox_filter_new_filter());
  filter->groupIdList = zox_splitted_list_split("|77|78|");
  apply(filter);
  EXPECT_THAT(ids(list, 1), ElementsAre(9));
  EXPECT_EQ(groupIds, nullptr);
  EXPECT_EQ(groupIdLen, 0);
}

TEST_F(ZoxEventlistFilter, PostIdAloneDecides) {
  apply(post_filter(4));
  EXPECT_THAT(ids(list, 1), ElementsAre(4));
  EXPECT_TRUE(server.requests().empty());
}

TEST_F(ZoxEventlistFilter, UnknownPostingIsFetched) {
  const std::string post = "<Post><PostID>99</PostID><Poster>p</Poster><Cat>0</Cat></Post>";
  server.reply("/3.7.3/xml-findpost.php", post);
  server.reply("/3.7.3/xml-posts.php", "<PostInfo>" + post + "</PostInfo>");
  apply(post_filter(99));
  EXPECT_FALSE(server.requests().empty());
  EXPECT_THAT(ids(list, 1), ElementsAre(99));
  EXPECT_NE(held(99), "nothing");
}

TEST_F(ZoxEventlistFilter, PostingThatCannotBeFetchedGivesAnEmptySet) {
  const test::LogCapture log;
  apply(post_filter(99));
  EXPECT_FALSE(server.requests().empty());
  EXPECT_TRUE(ids(list, 1).empty());
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 0U);
  EXPECT_NE(list->filtered, nullptr);
}

TEST_F(ZoxEventlistFilter, LoadForgetsTheSetAndKeepsTheFilter) {
  apply(title_filter("oneven"));
  ASSERT_EQ(zox_eventlist_save(list), 1);
  ASSERT_EQ(zox_eventlist_load(list, nullptr), 0U);
  EXPECT_EQ(list->filtered, nullptr);
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 0U);
  EXPECT_NE(list->activeFilter, nullptr);
}

TEST_F(ZoxEventlistFilter, PurgedPostingsStayInTheSetUntilItIsMadeAnew) {
  const OwnedEvent event = basic_event(1, "oneven getal");
  event->status = -3;
  add(event);
  apply(title_filter("oneven"));
  gpointer purged = find_object(list->tree, 1);
  g_object_add_weak_pointer(static_cast<GObject *>(purged), &purged);
  zox_eventlist_purge_deleted(list);
  EXPECT_THAT(ids(list), ElementsAre(2, 3, 4, 5, 6));
  EXPECT_EQ(zox_eventlist_get_count(list, 1), 3U);
  EXPECT_EQ(contents(list, 1).at(1), describe(*event));
  EXPECT_NE(purged, nullptr);
  apply(title_filter("oneven"));
  EXPECT_EQ(purged, nullptr);
  EXPECT_THAT(ids(list, 1), ElementsAre(3, 5));
}

TEST_F(ZoxEventlistFilter, ReplacedPostingsStayInTheSetUntilItIsMadeAnew) {
  apply(title_filter("oneven"));
  test::merge(list, {basic_event(1, "vervangen").get()});
  EXPECT_EQ(held(1), describe(*basic_event(1, "vervangen")));
  EXPECT_THAT(contents(list, 1).at(1), testing::HasSubstr("[oneven getal]"));
  apply(title_filter("oneven"));
  EXPECT_THAT(ids(list, 1), ElementsAre(3, 5));
}

using ZoxEventlistFilterDeathTest = ZoxEventlistFilter;

TEST_F(ZoxEventlistFilterDeathTest, NeedsTheIdSetForItself) {
  const test::NewsgroupIdSet set("|1|");
  const OwnedFilter filter(zox_filter_new_filter());
  filter->groupIdList = zox_splitted_list_split("|77|");
  EXPECT_DEATH(apply(filter), "assertion failed: \\(groupIds == NULL\\)");
}

}  // namespace
}  // namespace velkor
