/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Subscribers are told of changes, on their context. */
#include <velkor/zox_changes.h>

#include <thread>

#include <velkor/zox_config.h>
#include <velkor/zox_watchlist.h>

#include "core/changes.h"
#include "tests/unit/services/mail_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Changes : public ServiceTest {
protected:
  ~Changes() override {
    zox_changes_unsubscribe(subscription);
    static_cast<void>(told());
  }

  void subscribe(guint32 changes = ZOX_CHANGE_ALL) {
    subscription = zox_changes_subscribe(changes, nullptr, note, this, note_end);
  }

  /** What was told since the last call, as "change" or "change:posting". */
  std::vector<std::string> told() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE)
      continue;
    return std::exchange(events, {});
  }

  static void note(ZoxChange change, gint32 postId, gpointer self) {
    auto *changes = static_cast<Changes *>(self);
    changes->events.push_back(std::to_string(change) +
                              (postId == 0 ? "" : ":" + std::to_string(postId)));
    if (changes->end_at_first)
      zox_changes_unsubscribe(changes->subscription);
  }
  static void note_end(gpointer self) { static_cast<Changes *>(self)->events.push_back("end"); }

  guint32 subscription = 0;
  bool end_at_first = false;
  std::vector<std::string> events;
};

constexpr const char *list_changed = "1";
constexpr const char *settings_changed = "4";
constexpr const char *mail_changed = "8";
constexpr const char *cache_changed = "16";

TEST_F(Changes, AreToldOnceAndNotBeforeTheContextRuns) {
  subscribe();
  cache(5);
  cache(7);
  cache(5, "Andere titel");
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(told(), ElementsAre("2:5", "2:7"));
  EXPECT_THAT(told(), IsEmpty());
  cache(7);
  EXPECT_THAT(told(), ElementsAre("2:7"));
}

TEST_F(Changes, OfTheListAreMergesLoadsAndRemovals) {
  const OwnedEvent event(zox_event_new());
  event->postId = 5;
  event->status = ZOX_STATUS_REMOVED;
  subscribe(ZOX_CHANGE_LIST);
  GSList *objects = g_slist_prepend(nullptr, zox_event_object_new());
  const OwnedCells cells(objects);
  zox_event_object_set_event(static_cast<ZOXEventObject *>(objects->data), event.get());
  zox_eventlist_merge(core->eventlist, objects, nullptr, nullptr);
  EXPECT_THAT(told(), ElementsAre(list_changed));
  zox_eventlist_purge_deleted(core->eventlist);
  EXPECT_THAT(told(), ElementsAre(list_changed));
  zox_eventlist_purge_deleted(core->eventlist);
  EXPECT_THAT(told(), IsEmpty());
  zox_eventlist_load(core->eventlist, nullptr);
  EXPECT_THAT(told(), ElementsAre(list_changed));
}

TEST_F(Changes, OfTheSettingsIncludeTheWatchlist) {
  subscribe();
  zox_watchlist_add(5);
  EXPECT_THAT(told(), ElementsAre(settings_changed));
  zox_config_save();
  EXPECT_THAT(told(), ElementsAre(settings_changed));
}

TEST_F(Changes, OfTheMail) {
  subscribe();
  put_in_box("anna");
  zox_mail_save();
  EXPECT_THAT(told(), ElementsAre(mail_changed));
  zox_mail_load();
  EXPECT_THAT(told(), ElementsAre(mail_changed));
}

TEST_F(Changes, OfTheHealthOfTheCacheFile) {
  cache(5);
  zox_eventlist_save(core->eventlist);
  subscribe(ZOX_CHANGE_CACHE);
  EXPECT_EQ(zox_changes_cache_status(), ZOX_FILE_FINE);
  {
    const LogCapture log;
    const ClosedCacheDirectory closed(cache_file("velkor.posts.gz").parent_path());
    cache(6);
    zox_eventlist_save(core->eventlist);
    EXPECT_EQ(zox_changes_cache_status(), ZOX_FILE_NOT_WRITTEN);
    EXPECT_THAT(told(), ElementsAre(cache_changed));
    zox_eventlist_save(core->eventlist);
    EXPECT_THAT(told(), IsEmpty());
  }
  zox_eventlist_save(core->eventlist);
  EXPECT_EQ(zox_changes_cache_status(), ZOX_FILE_FINE);
  EXPECT_THAT(told(), ElementsAre(cache_changed));
}

TEST_F(Changes, MadeByOtherThreadsAreToldHere) {
  subscribe();
  std::thread([] { cache(5); }).join();
  EXPECT_THAT(told(), ElementsAre("2:5"));
}

TEST_F(Changes, AreNotToldAfterTheEnd) {
  subscribe();
  cache(5);
  EXPECT_TRUE(zox_changes_unsubscribe(subscription));
  cache(6);
  EXPECT_THAT(told(), ElementsAre("end"));
  EXPECT_FALSE(zox_changes_unsubscribe(subscription));
}

TEST_F(Changes, MayBeTheLastThatTheSubscriberWants) {
  subscribe();
  end_at_first = true;
  cache(5);
  cache(6);
  EXPECT_THAT(told(), ElementsAre("2:5", "end"));
}

TEST_F(Changes, AreToldOnTheContextChosen) {
  const std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>> context(
      g_main_context_new());
  subscription = zox_changes_subscribe(ZOX_CHANGE_POSTING, context.get(), note, this, note_end);
  cache(5);
  EXPECT_THAT(told(), IsEmpty());
  g_main_context_iteration(context.get(), FALSE);
  EXPECT_THAT(events, ElementsAre("2:5"));
  zox_changes_unsubscribe(subscription);
  g_main_context_iteration(context.get(), FALSE);
  EXPECT_THAT(events, ElementsAre("2:5", "end"));
}

}  // namespace
}  // namespace velkor::test
