/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Merging into the event list and removing from it. */
#include <gmock/gmock.h>

#include <velkor/zox_string.h>
#include <velkor/zox_watchlist.h>

#include "posting/event_record.h"
#include "support/clock.h"
#include "tests/support/log_capture.h"
#include "tests/unit/store/list_fixture.h"

namespace velkor {
namespace {

using test::basic_event;
using test::describe;
using test::event_in_state;
using test::ids;
using test::merge;
using testing::ElementsAre;

class ZoxEventlistChange : public test::EventlistTest {
protected:
  static void watch(gint32 postId) { ASSERT_EQ(zox_watchlist_add(postId), 1); }

  void add_of_age(gint32 postId, gint64 days) {
    const OwnedEvent event = basic_event(postId);
    event->stamp = test::days_ago(days) - 10;
    add(event);
  }
};

using Steps = std::vector<std::pair<guint32, guint32>>;

gint note_step(guint32 total, guint32 done, gpointer steps) {
  static_cast<Steps *>(steps)->emplace_back(total, done);
  return 0;
}

Steps steps_of_merge(ZOXEventlist *list, gint32 count) {
  GSList *objects = nullptr;
  for (gint32 id = 1; id <= count; ++id)
    objects = g_slist_prepend(objects, test::object_of(*basic_event(id)));
  Steps steps;
  zox_eventlist_merge(list, objects, note_step, &steps);
  g_slist_free(objects);
  return steps;
}

TEST_F(ZoxEventlistChange, MergeTellsEveryTenthAndTheEnd) {
  EXPECT_EQ(steps_of_merge(list, 25), (Steps{{25, 10}, {25, 20}, {25, 25}}));
  EXPECT_EQ(steps_of_merge(list, 10), (Steps{{10, 10}, {10, 10}}));
  EXPECT_EQ(steps_of_merge(list, 0), (Steps{{0, 0}}));
  EXPECT_EQ(zox_eventlist_get_count(list, 0), 25U);
}

TEST_F(ZoxEventlistChange, MergeTakesOverTheReferences) {
  ZOXEventObject *object = test::object_of(*basic_event(1));
  GSList *objects = g_slist_append(nullptr, object);
  zox_eventlist_merge(list, objects, nullptr, nullptr);
  EXPECT_EQ(find_object(list->tree, 1), object);
  EXPECT_EQ(object->parent.ref_count, 1U);
  EXPECT_EQ(objects->data, object);
  g_slist_free(objects);
}

TEST_F(ZoxEventlistChange, MergeReplacesAndDropsTheOldObject) {
  merge(list, {basic_event(1, "oud").get()});
  gpointer old = find_object(list->tree, 1);
  g_object_add_weak_pointer(static_cast<GObject *>(old), &old);
  merge(list, {basic_event(1, "nieuw").get()});
  EXPECT_EQ(old, nullptr);
  EXPECT_EQ(held(1), describe(*basic_event(1, "nieuw")));
}

TEST_F(ZoxEventlistChange, LaterPostingOfOneMergeWins) {
  merge(list, {basic_event(1, "een").get(), basic_event(1, "twee").get()});
  EXPECT_EQ(held(1), describe(*basic_event(1, "twee")));
}

TEST_F(ZoxEventlistChange, MergeMarksWhatTheWatchlistFollows) {
  watch(1);
  watch(2);
  core->watchlistUnchanged = 1;
  merge(list, {basic_event(1).get(), basic_event(3).get()});
  EXPECT_EQ(core->watchlistUnchanged, 1U);  // nothing was replaced yet
  EXPECT_EQ(OwnedEvent(zox_eventlist_lookup_id(list, 1))->watchlistUpdated, 0);
  merge(list, {basic_event(3).get()});
  EXPECT_EQ(core->watchlistUnchanged, 1U);  // not on the watchlist
  merge(list, {basic_event(1).get()});
  EXPECT_EQ(core->watchlistUnchanged, 0U);
  EXPECT_EQ(OwnedEvent(zox_eventlist_lookup_id(list, 1))->watchlistUpdated, 1);
}

TEST_F(ZoxEventlistChange, MergeMarksWhatAWatcherMatches) {
  core->config->watcher = g_slist_append(nullptr, zox_string_new("debian"));
  core->watcherNoHits = 1;
  merge(list, {basic_event(1, "Iets anders").get()});
  EXPECT_EQ(core->watcherNoHits, 1U);
  merge(list, {basic_event(2, "Het nieuwe DEBIAN").get()});
  EXPECT_EQ(core->watcherNoHits, 0U);
  EXPECT_EQ(OwnedEvent(zox_eventlist_lookup_id(list, 1))->watcherHit, 0);
  EXPECT_EQ(OwnedEvent(zox_eventlist_lookup_id(list, 2))->watcherHit, 1);
}

TEST_F(ZoxEventlistChange, ReplacingOnePostingOfTheWatchlistIsTold) {
  watch(1);
  core->watchlistUnchanged = 1;
  add(basic_event(1));
  EXPECT_EQ(core->watchlistUnchanged, 1U);
  add(basic_event(1, "nieuw"));
  EXPECT_EQ(core->watchlistUnchanged, 0U);
  EXPECT_EQ(held(1), describe(*basic_event(1, "nieuw")));  // watchlistUpdated stays 0
}

TEST_F(ZoxEventlistChange, PurgeRemovesWhatWasDeleted) {
  add(event_in_state(1, -3, 0));
  add(event_in_state(2, -2, 2 * test::day));
  add(event_in_state(3, -2, 3600));
  add(event_in_state(4, 0, 9 * test::day));
  add(event_in_state(5, -1, 9 * test::day));
  zox_eventlist_purge_deleted(list);
  EXPECT_THAT(ids(list), ElementsAre(3, 4, 5));
}

TEST_F(ZoxEventlistChange, PurgeTakesPostingsOffTheWatchlist) {
  watch(1);
  watch(2);
  add(event_in_state(1, -3, 0));
  add(event_in_state(2, 0, 0));
  zox_eventlist_purge_deleted(list);
  EXPECT_FALSE(zox_watchlist_is_in_list(1));
  EXPECT_TRUE(zox_watchlist_is_in_list(2));
  EXPECT_THAT(ids(list), ElementsAre(2));
}

TEST(EventAge, IsLongDeletedAfterMoreThanADay) {
  const OwnedEvent event = basic_event(1);
  constexpr gint64 now = 1300000000;
  event->status = -2;
  event->updated = now - 86400;
  EXPECT_FALSE(is_long_deleted(*event, now));
  event->updated = now - 86401;
  EXPECT_TRUE(is_long_deleted(*event, now));
  event->status = -3;
  EXPECT_FALSE(is_long_deleted(*event, now));
}

TEST_F(ZoxEventlistChange, PurgeCopesWithTheFarthestTimes) {
  const OwnedEvent event = basic_event(1);
  event->status = -2;
  event->updated = G_MININT64;
  add(event);
  event->postId = 2;
  event->updated = G_MAXINT64;
  add(event);
  zox_eventlist_purge_deleted(list);
  EXPECT_THAT(ids(list), ElementsAre(2));
}

TEST_F(ZoxEventlistChange, CleanupRemovesOldPostings) {
  for (gint32 choice = 0; choice <= 6; ++choice) {
    core->config->verwijderPostsNaXDagen = choice;
    const gint64 days = 7 * (choice + 1);
    add_of_age(1, days);
    add_of_age(2, days - 1);
    zox_eventlist_cleanup(list);
    EXPECT_THAT(ids(list), ElementsAre(2)) << choice;
  }
}

TEST_F(ZoxEventlistChange, CleanupKeepsTheWatchlist) {
  core->config->verwijderPostsNaXDagen = 2;
  watch(1);
  add_of_age(1, 100);
  add_of_age(2, 22);
  add_of_age(3, 20);
  zox_eventlist_cleanup(list);
  EXPECT_THAT(ids(list), ElementsAre(1, 3));
}

TEST_F(ZoxEventlistChange, CleanupSavesAndLoadsAgainWhenAnythingWasOld) {
  const OwnedEvent event = test::full_event(1);
  event->stamp = test::days_ago(100);
  add(event);
  add_of_age(2, 1);
  watch(1);
  zox_eventlist_cleanup(list);
  EXPECT_TRUE(std::filesystem::exists(cache_file("velkor.posts.gz")));
  EXPECT_EQ(OwnedEvent(zox_eventlist_lookup_id(list, 1))->des, nullptr);
  EXPECT_THAT(ids(list), ElementsAre(1, 2));
}

TEST_F(ZoxEventlistChange, CleanupWithoutOldPostingsTouchesNothing) {
  const OwnedEvent event = test::full_event(1);
  event->stamp = test::days_ago(1);
  add(event);
  zox_eventlist_cleanup(list);
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.posts.gz")));
  EXPECT_EQ(held(1), describe(*event));
}

TEST_F(ZoxEventlistChange, CleanupWithAnInvalidSettingOnlyWarns) {
  const test::LogCapture log;
  add_of_age(1, 1000);
  core->config->verwijderPostsNaXDagen = 7;
  zox_eventlist_cleanup(list);
  core->config->verwijderPostsNaXDagen = -1;
  zox_eventlist_cleanup(list);
  EXPECT_THAT(ids(list), ElementsAre(1));
  EXPECT_THAT(log.warnings(),
              ElementsAre("Ongeldige waarde : core->config->verwijderPostsNaXDagen = 7\n",
                          "Ongeldige waarde : core->config->verwijderPostsNaXDagen = -1\n"));
}

TEST_F(ZoxEventlistChange, CleanupThatCannotSaveLosesNothing) {
  const test::LogCapture log;
  add_of_age(1, 1000);
  add_of_age(2, 1);
  std::filesystem::create_directory(cache_file("velkor.posts.gz"));
  zox_eventlist_cleanup(list);
  EXPECT_THAT(ids(list), ElementsAre(2));
}

TEST_F(ZoxEventlistChange, CleanupOfAListWithoutATableDoesNothing) {
  const test::LogCapture log;
  g_hash_table_destroy(std::exchange(list->tree, nullptr));
  core->config->verwijderPostsNaXDagen = 7;
  zox_eventlist_cleanup(list);
  EXPECT_TRUE(log.warnings().empty());
  list->tree = new_event_table();
}

constexpr gint64 noon = 1300000000;

TEST_F(ZoxEventlistChange, AgeIsCountedToTheSecondOfTheClock) {
  const ReplacedClock clock([] { return noon; });
  core->config->verwijderPostsNaXDagen = 0;
  for (const gint64 older : {gint64{0}, gint64{1}}) {
    const OwnedEvent event = test::basic_event(static_cast<gint32>(older) + 1);
    event->stamp = noon - 7 * seconds_a_day - older;
    add(event);
  }
  zox_eventlist_cleanup(list);
  EXPECT_THAT(test::ids(list), testing::ElementsAre(1));
}

}  // namespace
}  // namespace velkor
