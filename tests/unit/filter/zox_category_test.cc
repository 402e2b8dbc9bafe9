/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_category.h>

#include <atomic>
#include <string>
#include <thread>

#include "support/slist.h"
#include "tests/support/filter_fixture.h"

namespace velkor {
namespace {

using test::filter_of;
using test::posting;
using ZoxCategories = test::FilterTest;

/** The tree in order, "name:id", the main categories in capitals of their own: "[name:id]". */
std::string printed_tree() {
  std::string text;
  for (const ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    const std::string entry = std::string(category->name->str) + ":" + std::to_string(category->id);
    text += category->isMain != 0 ? "[" + entry + "]" : entry;
    text += ' ';
  }
  return text;
}

std::string printed_counters() {
  std::string text;
  for (const ZoxCategory *category : Items<ZoxCategory>(core->categories))
    text += std::to_string(category->count) + " ";
  return text;
}

const ZoxCategory *entry(unsigned index) {
  return static_cast<const ZoxCategory *>(g_slist_nth_data(core->categories, index));
}

TEST_F(ZoxCategories, WithoutFiltersThereAreTheFourMainOnes) {
  zox_categories_init();
  EXPECT_EQ(printed_tree(), "[Beeld:0] [Geluid:1] [Spelletjes:2] [Applicaties:3] ");
}

TEST_F(ZoxCategories, WithoutFiltersEverythingIsRejected) {
  zox_categories_init();
  const OwnedFilter any(zox_filter_new_filter());
  for (const gint32 cat : {-1, 0, 1, 2, 3})
    EXPECT_FALSE(zox_filter_accepts(any.get(), posting(cat).get(), 0)) << cat;
}

TEST_F(ZoxCategories, FiltersFollowTheirMainCategoryInListOrder) {
  add_filter(3, "x");
  add_filter(0, "b");
  add_filter(1, "m");
  add_filter(0, "a");
  zox_categories_init();
  EXPECT_EQ(printed_tree(), "[Beeld:0] b:0 a:0 [Geluid:1] m:1 [Spelletjes:2] [Applicaties:3] x:3 ");
}

TEST_F(ZoxCategories, FiltersOfAnyOrOfUnknownCategoryAreLeftOut) {
  add_filter(-1, "any");
  add_filter(4, "beyond");
  zox_categories_init();
  EXPECT_EQ(printed_tree(), "[Beeld:0] [Geluid:1] [Spelletjes:2] [Applicaties:3] ");
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 2U);
}

TEST_F(ZoxCategories, FilterWithoutNameGivesAnEmptyName) {
  add_filter(2);
  zox_categories_init();
  ASSERT_EQ(entry(3)->isMain, 0);
  EXPECT_STREQ(entry(3)->name->str, "");
}

TEST_F(ZoxCategories, MainCategoryAcceptsEverySubCategory) {
  zox_categories_init();
  EXPECT_EQ(entry(1)->filter->cat, 1);
  EXPECT_EQ(entry(1)->filter->sCat, -1);
}

TEST_F(ZoxCategories, EntriesHoldCopiesOfTheFilters) {
  const OwnedFilter filter = filter_of(0, "DivX");
  filter->sCat = 4;
  filter->tags = zox_splitted_list_split("a4|d1");
  zox_filterlist_append_filter(core->filterlist, filter.get());
  zox_categories_init();
  const auto *held = static_cast<const ZoxFilter *>(core->filterlist->filters->data);
  const ZoxFilter *copy = entry(1)->filter;
  EXPECT_NE(copy, held);
  EXPECT_EQ(copy->sCat, 4);
  EXPECT_EQ(g_slist_length(copy->tags), 2U);
  EXPECT_NE(copy->tags, held->tags);
}

TEST_F(ZoxCategories, TreeFollowsTheFilterListOnlyWhenRebuilt) {
  keep({0});
  add_filter(0, "later");
  EXPECT_EQ(g_slist_length(core->categories), 5U);
  zox_categories_init();
  EXPECT_EQ(g_slist_length(core->categories), 6U);
}

TEST_F(ZoxCategories, InitTwiceLeavesOneTree) {
  keep({0, 3});
  const std::string tree = printed_tree();
  zox_categories_init();
  EXPECT_EQ(printed_tree(), tree);
}

TEST_F(ZoxCategories, GetHandsOutTheListItself) {
  EXPECT_EQ(zox_categories_get(), nullptr);
  zox_categories_init();
  EXPECT_EQ(zox_categories_get(), core->categories);
}

TEST_F(ZoxCategories, FreeLeavesNone) {
  keep({0});
  zox_categories_free();
  EXPECT_EQ(core->categories, nullptr);
}

TEST_F(ZoxCategories, ParentIsTheMainCategory) {
  keep({1, 1});
  const ZoxCategory *parent = zox_category_get_parent(1);
  ASSERT_NE(parent, nullptr);
  EXPECT_STREQ(parent->name->str, "Geluid");
  EXPECT_EQ(parent->isMain, 1);
  EXPECT_EQ(zox_category_get_parent(7), nullptr);
  EXPECT_EQ(zox_category_get_parent(-1), nullptr);
}

TEST_F(ZoxCategories, OnePostingCountsForEveryEntryThatAcceptsIt) {
  const OwnedFilter divx = filter_of(0, "DivX");
  divx->sCat = 0;
  zox_filterlist_append_filter(core->filterlist, divx.get());
  const OwnedFilter wmv = filter_of(0, "WMV");
  wmv->sCat = 1;
  zox_filterlist_append_filter(core->filterlist, wmv.get());
  keep({0, 1});
  const OwnedEvent event = posting(0, "een titel");
  event->sCat = 0;
  zox_category_update(event.get());
  EXPECT_EQ(printed_counters(), "1 1 0 1 0 0 0 0 ");
  zox_category_update(event.get());
  EXPECT_EQ(printed_counters(), "2 2 0 2 0 0 0 0 ");
}

TEST_F(ZoxCategories, PostingOfACategoryWithoutFilterCountsNowhere) {
  keep({1});
  zox_category_update(posting(0).get());
  EXPECT_EQ(printed_counters(), "0 0 0 0 0 ");
}

TEST_F(ZoxCategories, ResetClearsEveryCounter) {
  keep({0, 1});
  zox_category_update(posting(0).get());
  zox_category_update(posting(1).get());
  zox_categories_reset_counters();
  EXPECT_EQ(printed_counters(), "0 0 0 0 0 0 ");
}

TEST_F(ZoxCategories, EntryWithoutFilterIsPassedOver) {
  keep({0});
  auto *bare = static_cast<ZoxCategory *>(core->categories->next->data);
  zox_filter_free_filter(std::exchange(bare->filter, nullptr));
  zox_category_update(posting(0).get());
  EXPECT_EQ(printed_counters(), "1 0 0 0 0 ");
  const OwnedCells found(zox_category_find(posting(0).get()));
  EXPECT_EQ(g_slist_length(found.get()), 1U);
}

TEST_F(ZoxCategories, FindListsTheAcceptingEntriesInOrder) {
  add_filter(0, "b");
  add_filter(0, "a");
  keep({1});
  const OwnedCells found(zox_category_find(posting(0).get()));
  ASSERT_EQ(g_slist_length(found.get()), 3U);
  EXPECT_EQ(found->data, entry(0));
  EXPECT_EQ(found->next->data, entry(1));
  EXPECT_EQ(found->next->next->data, entry(2));
  EXPECT_EQ(zox_category_find(posting(2).get()), nullptr);
}

/** A tree whose one user filter wants the newsgroup 7. */
class ZoxCategoriesWithNewsgroups : public ZoxCategories {
protected:
  ZoxCategoriesWithNewsgroups() {
    core->config->groupFilterList = zox_splitted_list_split("7");
    const OwnedFilter filter = filter_of(0);
    filter->groupIdList = zox_splitted_list_split("1");
    zox_filterlist_append_filter(core->filterlist, filter.get());
    zox_categories_init();
    event->groups = zox_splitted_list_split("8");
  }

  OwnedEvent event = posting(0);
};

TEST_F(ZoxCategoriesWithNewsgroups, FindTestsTheFiltersOwnNewsgroups) {
  const OwnedCells others(zox_category_find(event.get()));
  EXPECT_EQ(g_slist_length(others.get()), 1U);
  zox_splitted_list_free(&event->groups);
  event->groups = zox_splitted_list_split("8|7");
  const OwnedCells both(zox_category_find(event.get()));
  EXPECT_EQ(g_slist_length(both.get()), 2U);
}

TEST_F(ZoxCategoriesWithNewsgroups, UpdateTestsTheIdSet) {
  const test::NewsgroupIdSet set("8");
  zox_category_update(event.get());
  EXPECT_EQ(printed_counters(), "1 1 0 0 0 ");
}

TEST(ZoxCategoryNames, AreThoseOfTheTable) {
  EXPECT_STREQ(zox_category_get_scat_name(0, 0), "DivX");
  EXPECT_STREQ(zox_category_get_scat_name(0, 5), "IMG");
  EXPECT_STREQ(zox_category_get_scat_name(1, 4), "Lossless");
  EXPECT_STREQ(zox_category_get_scat_name(2, 2), "Linux");
  EXPECT_STREQ(zox_category_get_scat_name(2, 3), "PSX");
  EXPECT_STREQ(zox_category_get_scat_name(2, 9), "Gamecube");
  EXPECT_STREQ(zox_category_get_scat_name(3, 2), "Linux");
  EXPECT_STREQ(zox_category_get_scat_name(3, 5), "Navigatie");
}

TEST(ZoxCategoryNames, AreEmptyOutsideTheTable) {
  EXPECT_STREQ(zox_category_get_scat_name(0, 6), "");
  EXPECT_STREQ(zox_category_get_scat_name(1, 5), "");
  EXPECT_STREQ(zox_category_get_scat_name(2, 10), "");
  EXPECT_STREQ(zox_category_get_scat_name(3, 6), "");
  EXPECT_STREQ(zox_category_get_scat_name(4, 0), "");
  EXPECT_STREQ(zox_category_get_scat_name(-1, 0), "");
  EXPECT_STREQ(zox_category_get_scat_name(0, static_cast<guint32>(-1)), "");
}

using ZoxCategoriesDeathTest = ZoxCategories;

TEST(ZoxCategoriesWithoutCoreDeathTest, NeedACore) {
  const char *message = "assertion failed: \\(core\\)";
  EXPECT_DEATH(zox_categories_init(), message);
  EXPECT_DEATH(zox_categories_free(), message);
  EXPECT_DEATH(zox_categories_get(), message);
  EXPECT_DEATH(zox_categories_reset_counters(), message);
  EXPECT_DEATH(zox_category_update(posting(0).get()), message);
  EXPECT_DEATH(zox_category_find(posting(0).get()), message);
  EXPECT_DEATH(zox_category_get_parent(0), message);
}

TEST_F(ZoxCategoriesDeathTest, NeedATree) {
  const char *message = "assertion failed: \\(core->categories\\)";
  EXPECT_DEATH(zox_categories_free(), message);
  EXPECT_DEATH(zox_categories_reset_counters(), message);
  EXPECT_DEATH(zox_category_update(posting(0).get()), message);
  EXPECT_DEATH(zox_category_find(posting(0).get()), message);
  EXPECT_DEATH(zox_category_get_parent(0), message);
}

TEST_F(ZoxCategoriesDeathTest, InitNeedsAFilterList) {
  EXPECT_DEATH(
      {
        core->filterlist = nullptr;
        zox_categories_init();
      },
      "zox_category.*zox_categories_init: assertion failed: \\(core->filterlist\\)");
}

TEST_F(ZoxCategoriesDeathTest, NoEntryIsNull) {
  zox_categories_init();
  const char *message = "assertion failed: \\(category\\)";
  const auto spoil = [] { core->categories->data = nullptr; };
  EXPECT_DEATH((spoil(), zox_categories_free()), message);
  EXPECT_DEATH((spoil(), zox_categories_reset_counters()), message);
  EXPECT_DEATH((spoil(), zox_category_update(posting(0).get())), message);
  EXPECT_DEATH((spoil(), zox_category_find(posting(0).get())), message);
  EXPECT_DEATH((spoil(), zox_category_get_parent(0)), message);
}

TEST_F(ZoxCategoriesDeathTest, NoEntryIsNameless) {
  zox_categories_init();
  const char *message = "assertion failed: \\(category->name\\)";
  const auto spoil = [] { static_cast<ZoxCategory *>(core->categories->data)->name = nullptr; };
  EXPECT_DEATH((spoil(), zox_categories_free()), message);
  EXPECT_DEATH((spoil(), zox_categories_reset_counters()), message);
  EXPECT_DEATH((spoil(), zox_category_update(posting(0).get())), message);
  EXPECT_DEATH((spoil(), zox_category_find(posting(0).get())), message);
  EXPECT_DEATH((spoil(), zox_category_get_parent(0)), message);
}

TEST_F(ZoxCategories, AreRebuiltWhilePostingsAreCounted) {
  constexpr int times = 300;
  keep({1});
  std::atomic<bool> done = false;
  std::thread counter([&done] {
    const OwnedEvent event = posting(1);
    while (!done)
      zox_category_update(event.get());
  });
  for (int time = 0; time < times; ++time) {
    zox_categories_init();
    zox_categories_reset_counters();
  }
  done = true;
  counter.join();
  zox_categories_reset_counters();
  zox_category_update(posting(1).get());
  EXPECT_EQ(printed_counters(), "0 1 1 0 0 ");
}

}  // namespace
}  // namespace velkor
