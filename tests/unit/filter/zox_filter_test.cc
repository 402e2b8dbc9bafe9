/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filter.h>

#include <string>

#include "support/slist.h"
#include "tests/support/filter_fixture.h"

namespace velkor {
namespace {

using ZoxFilterRecord = test::CategoryTest;

std::string joined(GSList *list) {
  const OwnedString text(zox_splitted_list_concat(list));
  return text->str;
}

/** A filter with every field set. */
OwnedFilter full_filter() {
  OwnedFilter filter(zox_filter_new_filter());
  filter->name = zox_string_new("naam");
  filter->sinceStamp = 5000000000;
  filter->postId = 7;
  filter->titleSearch = zox_string_new("titel");
  filter->posterSearch = zox_string_new("");
  filter->cat = 1;
  filter->sCat = 2;
  filter->tags = zox_splitted_list_split("a0|d3");
  filter->extraTag = zox_string_new("HD");
  filter->sortMode = 3;
  filter->sortAscending = 1;
  filter->perCategory = 1;
  filter->useDateRange = 1;
  filter->dateFrom = -6;
  filter->dateTo = 6000000000;
  filter->groupIdList = zox_splitted_list_split("1|2");
  filter->statusList = g_slist_prepend(filter->statusList, GINT_TO_POINTER(-3));
  filter->statusList = g_slist_prepend(filter->statusList, GINT_TO_POINTER(0));
  return filter;
}

TEST_F(ZoxFilterRecord, NewFilterSetsNoCondition) {
  const OwnedFilter filter(zox_filter_new_filter());
  EXPECT_EQ(filter->cat, -1);
  EXPECT_EQ(filter->sCat, -1);
  filter->cat = 0;
  filter->sCat = 0;
  const ZoxFilter zero{};
  EXPECT_EQ(filter->name, zero.name);
  EXPECT_EQ(filter->sinceStamp, 0);
  EXPECT_EQ(filter->postId, 0U);
  EXPECT_EQ(filter->titleSearch, nullptr);
  EXPECT_EQ(filter->posterSearch, nullptr);
  EXPECT_EQ(filter->tags, nullptr);
  EXPECT_EQ(filter->extraTag, nullptr);
  EXPECT_EQ(filter->sortMode, 0);
  EXPECT_EQ(filter->sortAscending, 0);
  EXPECT_EQ(filter->perCategory, 0);
  EXPECT_EQ(filter->useDateRange, 0);
  EXPECT_EQ(filter->dateFrom, 0);
  EXPECT_EQ(filter->dateTo, 0);
  EXPECT_EQ(filter->groupIdList, nullptr);
  EXPECT_EQ(filter->statusList, nullptr);
}

TEST_F(ZoxFilterRecord, DuplicateCopiesEveryField) {
  const OwnedFilter source = full_filter();
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_STREQ(copy->name->str, "naam");
  EXPECT_EQ(copy->sinceStamp, 5000000000);
  EXPECT_EQ(copy->postId, 7U);
  EXPECT_STREQ(copy->titleSearch->str, "titel");
  EXPECT_STREQ(copy->posterSearch->str, "");
  EXPECT_EQ(copy->cat, 1);
  EXPECT_EQ(copy->sCat, 2);
  EXPECT_EQ(joined(copy->tags), "|a0|d3|");
  EXPECT_STREQ(copy->extraTag->str, "HD");
  EXPECT_EQ(copy->sortMode, 3);
  EXPECT_EQ(copy->sortAscending, 1);
  EXPECT_EQ(copy->perCategory, 1);
  EXPECT_EQ(copy->useDateRange, 1);
  EXPECT_EQ(copy->dateFrom, -6);
  EXPECT_EQ(copy->dateTo, 6000000000);
  ASSERT_EQ(g_slist_length(copy->statusList), 2U);
  EXPECT_EQ(GPOINTER_TO_INT(copy->statusList->data), 0);
  EXPECT_EQ(GPOINTER_TO_INT(copy->statusList->next->data), -3);
}

TEST_F(ZoxFilterRecord, DuplicateSharesNothing) {
  const OwnedFilter source = full_filter();
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_NE(copy->name, source->name);
  EXPECT_NE(copy->titleSearch, source->titleSearch);
  EXPECT_NE(copy->posterSearch, source->posterSearch);
  EXPECT_NE(copy->extraTag, source->extraTag);
  EXPECT_NE(copy->tags->data, source->tags->data);
  EXPECT_NE(copy->statusList, source->statusList);
}

TEST_F(ZoxFilterRecord, DuplicateKeepsNullApartFromEmpty) {
  const OwnedFilter source(zox_filter_new_filter());
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_EQ(copy->name, nullptr);
  EXPECT_EQ(copy->titleSearch, nullptr);
  EXPECT_EQ(copy->posterSearch, nullptr);
  EXPECT_EQ(copy->extraTag, nullptr);
  EXPECT_EQ(copy->tags, nullptr);
  EXPECT_EQ(copy->groupIdList, nullptr);
  EXPECT_EQ(copy->statusList, nullptr);
}

TEST_F(ZoxFilterRecord, DuplicateTakesTheNewsgroupsOfTheSettings) {
  const OwnedFilter source = full_filter();
  core->config->groupFilterList = zox_splitted_list_split("30|40|50");
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_EQ(joined(copy->groupIdList), "|30|40|50|");
  EXPECT_NE(copy->groupIdList, core->config->groupFilterList);
}

TEST_F(ZoxFilterRecord, DuplicateHasNoNewsgroupsWhenTheSettingsHaveNone) {
  const OwnedFilter source = full_filter();
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_EQ(copy->groupIdList, nullptr);
}

TEST_F(ZoxFilterRecord, WithoutNewsgroupConditionTheCopyHasNone) {
  core->config->groupFilterList = zox_splitted_list_split("30");
  const OwnedFilter source(zox_filter_new_filter());
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_EQ(copy->groupIdList, nullptr);
}

TEST(ZoxFilterWithoutCore, OnlyTheNewsgroupsNeedOne) {
  const OwnedFilter source = full_filter();
  zox_splitted_list_free(&source->groupIdList);
  const OwnedFilter copy(zox_filter_duplicate(source.get()));
  EXPECT_STREQ(copy->name->str, "naam");
}

using ZoxFilterRecordDeathTest = ZoxFilterRecord;

TEST_F(ZoxFilterRecordDeathTest, FreeNeedsAFilter) {
  EXPECT_DEATH(zox_filter_free_filter(nullptr), "assertion failed: \\(filter\\)");
}

TEST_F(ZoxFilterRecordDeathTest, NoTagIsNull) {
  ZoxFilter *filter = zox_filter_new_filter();
  filter->tags = g_slist_prepend(nullptr, nullptr);
  EXPECT_DEATH(zox_filter_free_filter(filter), "assertion failed: \\(tag\\)");
  filter->tags = g_slist_delete_link(filter->tags, filter->tags);
  zox_filter_free_filter(filter);
}

TEST_F(ZoxFilterRecordDeathTest, NoNewsgroupIsNull) {
  ZoxFilter *filter = zox_filter_new_filter();
  filter->groupIdList = g_slist_prepend(nullptr, nullptr);
  EXPECT_DEATH(zox_filter_free_filter(filter), "assertion failed: \\(groupID\\)");
  filter->groupIdList = g_slist_delete_link(filter->groupIdList, filter->groupIdList);
  zox_filter_free_filter(filter);
}

TEST_F(ZoxFilterRecordDeathTest, NewsgroupsNeedSettings) {
  const OwnedFilter source = full_filter();
  zox_config_free();
  EXPECT_DEATH(zox_filter_duplicate(source.get()), "assertion failed: \\(core->config\\)");
}

TEST(ZoxFilterWithoutCoreDeathTest, NewsgroupsNeedACore) {
  const OwnedFilter source = full_filter();
  EXPECT_DEATH(zox_filter_duplicate(source.get()), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_filter_duplicate(nullptr), "assertion failed: \\(filter\\)");
}

}  // namespace
}  // namespace velkor
