/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watcher.h>

#include <set>
#include <string>

#include <gmock/gmock.h>

#include <velkor/zox_eventlist.h>

#include "tests/support/filter_fixture.h"

namespace velkor {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

struct Calls {
  std::multiset<gint32> postIds;
  std::set<std::string> texts;
};

gint note(ZoxEvent *event, const char *text, gpointer userData) {
  auto *calls = static_cast<Calls *>(userData);
  calls->postIds.insert(event->postId);
  calls->texts.insert(text);
  return 1;
}

/** A user who keeps category 0 only. */
class ZoxWatcherForeach : public test::FilterTest {
protected:
  ZoxWatcherForeach() {
    keep({0});
    core->eventlist = zox_eventlist_new();
    add_posting(1, 0, "Een Titel");
    add_posting(2, 0, "nog een titel");
    add_posting(3, 0, "iets anders");
    add_posting(4, 1, "een titel");
  }

  static void add_posting(gint32 postId, gint32 cat, const char *title) {
    const OwnedEvent event = test::posting(cat, title);
    event->postId = postId;
    zox_eventlist_add_or_replace_event(core->eventlist, event.get());
  }

  Calls calls;
};

TEST_F(ZoxWatcherForeach, CallsOncePerMatchWithTextAndData) {
  zox_watcher_foreach("TITEL", note, &calls);
  EXPECT_THAT(calls.postIds, UnorderedElementsAre(1, 2));
  EXPECT_THAT(calls.texts, UnorderedElementsAre("TITEL"));
}

TEST_F(ZoxWatcherForeach, TextNeedsNotBeAWatcher) {
  EXPECT_EQ(core->config->watcher, nullptr);
  zox_watcher_foreach("anders", note, &calls);
  EXPECT_THAT(calls.postIds, UnorderedElementsAre(3));
}

TEST_F(ZoxWatcherForeach, NoMatchNoCall) {
  zox_watcher_foreach("staat nergens", note, &calls);
  EXPECT_THAT(calls.postIds, IsEmpty());
}

TEST_F(ZoxWatcherForeach, ReplacesTheViewFilter) {
  zox_eventlist_apply_filter(core->eventlist, test::filter_of(0).get());
  zox_watcher_foreach("titel", note, &calls);
  const OwnedFilter filter(zox_eventlist_get_filter(core->eventlist));
  EXPECT_STREQ(filter->titleSearch->str, "titel");
  EXPECT_EQ(filter->cat, -1);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 1), 2U);
}

TEST_F(ZoxWatcherForeach, EventsAreCopies) {
  zox_watcher_foreach(
      "anders",
      [](ZoxEvent *event, const char *, gpointer) {
        g_string_assign(event->title, "veranderd");
        return 0;
      },
      nullptr);
  const OwnedEvent event(zox_eventlist_lookup_id(core->eventlist, 3));
  EXPECT_STREQ(event->title->str, "iets anders");
}

TEST_F(ZoxWatcherForeach, EventListKeepsItsReferences) {
  const guint before = G_OBJECT(core->eventlist)->ref_count;
  zox_watcher_foreach("titel", note, &calls);
  EXPECT_EQ(G_OBJECT(core->eventlist)->ref_count, before);
}

TEST(ZoxWatcherForeachWithoutCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_watcher_foreach("x", note, nullptr), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
