/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watcher.h>

#include "filter/watchers.h"
#include "tests/support/filter_fixture.h"

namespace velkor {
namespace {

using test::posting;

/** A user who keeps category 0 only. */
class ZoxWatcher : public test::FilterTest {
protected:
  ZoxWatcher() { keep({0}); }

  static void watch(const char *texts) { core->config->watcher = zox_splitted_list_split(texts); }
  static bool matches(gint32 cat, const char *title) {
    return zox_watcher_test_event(posting(cat, title).get()) != FALSE;
  }
};

TEST_F(ZoxWatcher, WithoutWatchersNothingMatches) {
  EXPECT_FALSE(matches(0, "een titel"));
  EXPECT_FALSE(matches(0, nullptr));
}

TEST_F(ZoxWatcher, MatchesTheTitleRegardlessOfCase) {
  watch("TiTeL");
  EXPECT_TRUE(matches(0, "een TITEL!"));
  EXPECT_FALSE(matches(0, "een tit"));
  EXPECT_FALSE(matches(0, nullptr));
}

TEST_F(ZoxWatcher, AnyWatcherWillDo) {
  watch("eerste|tweede");
  EXPECT_TRUE(matches(0, "de tweede"));
  EXPECT_TRUE(matches(0, "de eerste"));
  EXPECT_FALSE(matches(0, "de derde"));
}

TEST_F(ZoxWatcher, NeverMatchesACategoryThatTheUserDoesNotKeep) {
  watch("titel");
  EXPECT_FALSE(matches(1, "een titel"));
}

TEST_F(ZoxWatcher, NeitherTagsNorNewsgroupsCount) {
  watch("titel");
  core->config->groupFilterList = zox_splitted_list_split("1");
  core->config->groupFilter = 1;
  EXPECT_TRUE(matches(0, "een titel"));
}

TEST_F(ZoxWatcher, EmptyTextOccursEverywhere) {
  core->config->watcher = g_slist_prepend(nullptr, zox_string_new(""));
  EXPECT_TRUE(matches(0, nullptr));
  EXPECT_FALSE(matches(1, "een titel"));
}

TEST_F(ZoxWatcher, TestLeavesTheWatchersAlone) {
  watch("titel|ander");
  EXPECT_TRUE(matches(0, "een titel"));
  const OwnedString text(zox_splitted_list_concat(core->config->watcher));
  EXPECT_STREQ(text->str, "|titel|ander|");
}

TEST_F(ZoxWatcher, PassMatchesWhatTheTestOfOnePostingMatches) {
  watch("eerste|Tweede|ee");
  Watchers watchers;
  for (const char *title : {"de EERSTE", "de tweede", "geen van alle", "niets", ""}) {
    for (const gint32 cat : {0, 1})
      EXPECT_EQ(watchers.match(*posting(cat, title)), matches(cat, title)) << title;
  }
  EXPECT_FALSE(watchers.match(*posting(0, nullptr)));
}

TEST_F(ZoxWatcher, EmptyWatcherMatchesWithoutATitleInAPassToo) {
  core->config->watcher = g_slist_prepend(nullptr, zox_string_new(""));
  EXPECT_TRUE(Watchers().match(*posting(0, nullptr)));
  EXPECT_FALSE(Watchers().match(*posting(1, "een titel")));
}

TEST_F(ZoxWatcher, StateIsAPlainValue) {
  EXPECT_EQ(zox_watcher_get_state(), 0U);
  zox_watcher_set_state(3000000000U);
  EXPECT_EQ(zox_watcher_get_state(), 3000000000U);
  EXPECT_EQ(core->watcherNoHits, 3000000000U);
}

using ZoxWatcherDeathTest = ZoxWatcher;

TEST_F(ZoxWatcherDeathTest, NeedsSettings) {
  zox_config_free();
  EXPECT_DEATH(matches(0, "titel"), "zox_watcher_test_event: assertion failed: \\(core->config\\)");
}

TEST_F(ZoxWatcherDeathTest, NoWatcherIsNull) {
  EXPECT_DEATH(
      {
        core->config->watcher = g_slist_prepend(nullptr, nullptr);
        matches(0, "titel");
      },
      "zox_watcher_test_event: assertion failed: \\(watcher\\)");
}

TEST_F(ZoxWatcherDeathTest, NoWatcherIsNullInAPassEither) {
  EXPECT_DEATH(
      {
        core->config->watcher = g_slist_append(nullptr, zox_string_new("titel"));
        core->config->watcher = g_slist_append(core->config->watcher, nullptr);
        Watchers watchers;
        if (watchers.match(*posting(0, "een titel")))  // a hit before it ends the test
          (void)watchers.match(*posting(1, "een titel"));
      },
      "zox_watcher_test_event: assertion failed: \\(watcher\\)");
}

TEST(ZoxWatcherWithoutCoreDeathTest, NeedsACore) {
  const char *message = "assertion failed: \\(core\\)";
  EXPECT_DEATH(zox_watcher_test_event(posting(0).get()), message);
  EXPECT_DEATH(zox_watcher_get_state(), message);
  EXPECT_DEATH(zox_watcher_set_state(1), message);
}

}  // namespace
}  // namespace velkor
