/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watchlist.h>

#include <string>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "filter/watched_ids.h"
#include "support/owned.h"
#include "tests/support/layer_fixtures.h"

namespace velkor {
namespace {

class ZoxWatchlist : public test::CategoryTest {
protected:
  static std::string entries() {
    const OwnedString text(zox_splitted_list_concat(core->config->watchlist));
    return text->str;
  }

  [[nodiscard]] bool saved() const { return std::filesystem::exists(cache_file("velkor.conf")); }
  [[nodiscard]] bool is_in_file(std::string_view line) const {
    return test::read_file(cache_file("velkor.conf")).find(line) != std::string::npos;
  }
};

TEST_F(ZoxWatchlist, AddAppendsInOrderAndSaves) {
  EXPECT_EQ(zox_watchlist_add(42), 1);
  EXPECT_EQ(zox_watchlist_add(7), 1);
  EXPECT_EQ(entries(), "|42|7|");
  EXPECT_EQ(zox_watchlist_get(), core->config->watchlist);
  EXPECT_TRUE(is_in_file("watchlist=42\nwatchlist=7\n"));
}

TEST_F(ZoxWatchlist, AddTakesTheHighestId) {
  EXPECT_EQ(zox_watchlist_add(G_MAXINT32), 1);
  EXPECT_EQ(entries(), "|2147483647|");
}

TEST_F(ZoxWatchlist, AddRefusesIdsBelowOne) {
  EXPECT_EQ(zox_watchlist_add(0), 0);
  EXPECT_EQ(zox_watchlist_add(-5), 0);
  EXPECT_EQ(core->config->watchlist, nullptr);
  EXPECT_FALSE(saved());
}

TEST_F(ZoxWatchlist, AddRefusesWhatIsListed) {
  EXPECT_EQ(zox_watchlist_add(42), 1);
  EXPECT_EQ(zox_watchlist_add(42), 0);
  EXPECT_EQ(entries(), "|42|");
}

TEST_F(ZoxWatchlist, IdsAreComparedAsNumbers) {
  core->config->watchlist = zox_splitted_list_split(" 042x|-1");
  EXPECT_TRUE(zox_watchlist_is_in_list(42));
  EXPECT_FALSE(zox_watchlist_is_in_list(4));
  EXPECT_TRUE(zox_watchlist_is_in_list(0xFFFFFFFFU));
  EXPECT_EQ(zox_watchlist_add(42), 0);
}

TEST_F(ZoxWatchlist, EmptyListHoldsNothing) {
  EXPECT_EQ(zox_watchlist_get(), nullptr);
  EXPECT_FALSE(zox_watchlist_is_in_list(0));
}

TEST_F(ZoxWatchlist, RemoveTakesTheFirstEntryAndSaves) {
  core->config->watchlist = zox_splitted_list_split("1|2|02|3");
  EXPECT_EQ(zox_watchlist_remove(2), 1);
  EXPECT_EQ(entries(), "|1|02|3|");
  EXPECT_TRUE(is_in_file("watchlist=1\nwatchlist=02\nwatchlist=3\n"));
  EXPECT_EQ(zox_watchlist_remove(1), 1);
  EXPECT_EQ(entries(), "|02|3|");
}

TEST_F(ZoxWatchlist, RemoveOfAnUnlistedIdDoesNotSave) {
  core->config->watchlist = zox_splitted_list_split("1");
  EXPECT_EQ(zox_watchlist_remove(2), 0);
  EXPECT_EQ(entries(), "|1|");
  EXPECT_FALSE(saved());
}

TEST_F(ZoxWatchlist, ClearEmptiesAndSaves) {
  core->config->watchlist = zox_splitted_list_split("1|2");
  zox_watchlist_clear();
  EXPECT_EQ(core->config->watchlist, nullptr);
  EXPECT_FALSE(is_in_file("watchlist="));
}

TEST_F(ZoxWatchlist, PrintsOneLineAnEntry) {
  core->config->watchlist = zox_splitted_list_split("42|043|x");
  const OwnedString text(zox_watchlist_print());
  EXPECT_STREQ(text->str, "\t<Watchlist>42</Watchlist>\n"
                          "\t<Watchlist>43</Watchlist>\n"
                          "\t<Watchlist>0</Watchlist>\n");
}

TEST_F(ZoxWatchlist, PrintsAnEmptyListAsNothing) {
  const OwnedString text(zox_watchlist_print());
  EXPECT_STREQ(text->str, "");
}

TEST_F(ZoxWatchlist, PassFindsWhatTheListHolds) {
  core->config->watchlist = zox_splitted_list_split("42|7| 9x|4294967295|7");
  WatchedIds watched;
  for (int round = 0; round < 3; ++round) {
    for (gint32 postId = -2; postId < 50; ++postId)
      EXPECT_EQ(watched.contains(postId),
                zox_watchlist_is_in_list(static_cast<guint32>(postId)) != FALSE)
          << postId;
  }
}

TEST_F(ZoxWatchlist, PassMayAddIds) {
  core->config->watchlist = zox_splitted_list_split("42|7");
  WatchedIds watched;
  EXPECT_TRUE(watched.add(8));
  EXPECT_FALSE(watched.add(8));
  EXPECT_FALSE(watched.add(7));
  EXPECT_TRUE(watched.contains(8));
  EXPECT_TRUE(watched.contains(42));
  EXPECT_FALSE(watched.contains(9));
  EXPECT_FALSE(zox_watchlist_is_in_list(8));  // the list itself stays as it is
}

TEST_F(ZoxWatchlist, StateIsAPlainValue) {
  EXPECT_EQ(zox_watchlist_get_state(), 0U);
  zox_watchlist_set_state(3000000000U);
  EXPECT_EQ(zox_watchlist_get_state(), 3000000000U);
  EXPECT_EQ(core->watchlistUnchanged, 3000000000U);
}

using ZoxWatchlistDeathTest = ZoxWatchlist;

/** What a failed assertion prints: its file, its function and the expression. */
std::string failure(const std::string &function, const std::string &expression) {
  return "zox_watchlist\\.cc:[0-9]+:" + function + ": assertion failed: \\(" + expression + "\\)";
}

TEST_F(ZoxWatchlistDeathTest, NoEntryIsNull) {
  const auto spoil = [] { core->config->watchlist = g_slist_prepend(nullptr, nullptr); };
  EXPECT_DEATH((spoil(), zox_watchlist_is_in_list(1)),
               failure("zox_watchlist_is_in_list", "watchlist"));
  EXPECT_DEATH((spoil(), zox_watchlist_add(1)), failure("zox_watchlist_is_in_list", "watchlist"));
  EXPECT_DEATH((spoil(), zox_watchlist_remove(1)), failure("zox_watchlist_remove", "watchlist"));
  EXPECT_DEATH((spoil(), zox_watchlist_clear()), failure("zox_watchlist_clear", "watchlist"));
  EXPECT_DEATH((spoil(), zox_watchlist_print()), failure("zox_watchlist_print", "watchlist"));
}

TEST_F(ZoxWatchlistDeathTest, NoEntryIsNullForAPassEither) {
  core->config->watchlist = g_slist_append(nullptr, zox_string_new("42"));
  core->config->watchlist = g_slist_append(core->config->watchlist, nullptr);
  WatchedIds watched;
  for (int lookup = 0; lookup < 4; ++lookup) {
    EXPECT_DEATH((void)watched.contains(43), failure("zox_watchlist_is_in_list", "watchlist"));
    EXPECT_TRUE(watched.contains(42));  // what stands before it is found
  }
  core->config->watchlist =
      g_slist_delete_link(core->config->watchlist, g_slist_last(core->config->watchlist));
}

TEST_F(ZoxWatchlistDeathTest, NeedsSettings) {
  zox_config_free();
  EXPECT_DEATH(zox_watchlist_get(), failure("zox_watchlist_get", "core->config"));
  EXPECT_DEATH(zox_watchlist_is_in_list(1), failure("zox_watchlist_is_in_list", "core->config"));
  EXPECT_DEATH(zox_watchlist_add(1), failure("zox_watchlist_add", "core->config"));
  EXPECT_DEATH(zox_watchlist_remove(1), failure("zox_watchlist_remove", "core->config"));
  EXPECT_DEATH(zox_watchlist_clear(), failure("zox_watchlist_clear", "core->config"));
  EXPECT_DEATH(zox_watchlist_print(), failure("zox_watchlist_print", "core->config"));
}

TEST(ZoxWatchlistWithoutCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_watchlist_get(), failure("zox_watchlist_get", "core"));
  EXPECT_DEATH(zox_watchlist_is_in_list(1), failure("zox_watchlist_is_in_list", "core"));
  EXPECT_DEATH(zox_watchlist_add(1), failure("zox_watchlist_add", "core"));
  EXPECT_DEATH(zox_watchlist_remove(1), failure("zox_watchlist_remove", "core"));
  EXPECT_DEATH(zox_watchlist_clear(), failure("zox_watchlist_clear", "core"));
  EXPECT_DEATH(zox_watchlist_print(), failure("zox_watchlist_print", "core"));
  EXPECT_DEATH(zox_watchlist_get_state(), failure("zox_watchlist_get_state", "core"));
  EXPECT_DEATH(zox_watchlist_set_state(1), failure("zox_watchlist_set_state", "core"));
}

}  // namespace
}  // namespace velkor
