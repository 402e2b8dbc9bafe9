/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_groups.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "taxonomy/group_index.h"
#include "tests/support/layer_fixtures.h"

namespace velkor {
namespace {

using ZoxGroups = test::TableTest;

void add_group(guint32 id, const char *name) {
  ZoxGroup *group = zox_group_new();
  group->id = id;
  group->groupName = zox_string_new(name);
  core->groups = g_slist_append(core->groups, group);
}

TEST_F(ZoxGroups, TableIsUnknownAtFirst) {
  EXPECT_EQ(zox_groups_get(), nullptr);
  EXPECT_FALSE(zox_group_list_ready());
  EXPECT_EQ(zox_group_by_id(0), nullptr);
}

TEST_F(ZoxGroups, NewGroupIsEmpty) {
  ZoxGroup *group = zox_group_new();
  EXPECT_EQ(group->id, 0U);
  EXPECT_EQ(group->groupName, nullptr);
  g_free(group);
}

TEST_F(ZoxGroups, FindsTheFirstOfAnId) {
  add_group(5, "alt.binaries.a");
  add_group(4000000000U, "alt.binaries.b");
  add_group(5, "alt.binaries.c");
  EXPECT_TRUE(zox_group_list_ready());
  EXPECT_EQ(zox_groups_get(), core->groups);
  EXPECT_STREQ(zox_group_by_id(5)->groupName->str, "alt.binaries.a");
  EXPECT_STREQ(zox_group_by_id(4000000000U)->groupName->str, "alt.binaries.b");
  EXPECT_EQ(zox_group_by_id(6), nullptr);
}

TEST_F(ZoxGroups, IndexFindsWhatTheTableHolds) {
  GroupIndex empty;
  EXPECT_EQ(empty.find(1), nullptr);
  add_group(5, "alt.binaries.a");
  add_group(4000000000U, "alt.binaries.b");
  add_group(5, "alt.binaries.c");
  add_group(0, "alt.binaries.d");
  GroupIndex index;
  for (int round = 0; round < 10; ++round) {
    for (const guint32 id : {0U, 4U, 5U, 4000000000U})
      EXPECT_EQ(index.find(id), zox_group_by_id(id)) << id;
  }
}

TEST_F(ZoxGroups, FreeAllTakesNamelessGroupsToo) {
  add_group(1, nullptr);
  add_group(2, "alt.binaries.b");
  zox_group_free_all();
  EXPECT_EQ(core->groups, nullptr);
  zox_group_free_all();
}

/** The id set of a test; it is unset at the end. */
class ZoxGroupIds : public ::testing::Test {
protected:
  ~ZoxGroupIds() override {
    if (groupIds != nullptr)
      zox_group_unset_group_id_list();
  }

  static void set(const char *ids) {
    GSList *list = zox_splitted_list_split(ids);
    zox_group_set_group_id_list(list);
    zox_splitted_list_free(&list);
  }
};

TEST_F(ZoxGroupIds, SetOfOneHoldsThatOneAndNoOther) {
  set("12");
  EXPECT_EQ(groupIdLen, 1);
  EXPECT_TRUE(zox_group_id_is_in_list(12));
  EXPECT_FALSE(zox_group_id_is_in_list(0));
  EXPECT_FALSE(zox_group_id_is_in_list(1));
  EXPECT_FALSE(zox_group_id_is_in_list(13));
}

TEST_F(ZoxGroupIds, KeepsOrderAndReadsLikeTheStandardConversion) {
  set(" 7|+8|-1|9x|x|4294967295");
  ASSERT_EQ(groupIdLen, 6);
  const std::vector<gint32> ids(groupIds, groupIds + groupIdLen);
  EXPECT_EQ(ids, (std::vector<gint32>{7, 8, -1, 9, 0, -1}));
  EXPECT_TRUE(zox_group_id_is_in_list(0xFFFFFFFFU));
}

TEST_F(ZoxGroupIds, SetWithoutLengthHoldsNothing) {
  set("12");
  groupIdLen = 0;
  EXPECT_FALSE(zox_group_id_is_in_list(12));
  groupIdLen = -1;
  EXPECT_FALSE(zox_group_id_is_in_list(12));
}

TEST_F(ZoxGroupIds, UnsetClearsBoth) {
  set("1|2|3");
  zox_group_unset_group_id_list();
  EXPECT_EQ(groupIds, nullptr);
  EXPECT_EQ(groupIdLen, 0);
  set("4");
  EXPECT_TRUE(zox_group_id_is_in_list(4));
}

using ZoxGroupIdsDeathTest = ZoxGroupIds;

TEST_F(ZoxGroupIdsDeathTest, UnsetTwice) {
  set("1");
  zox_group_unset_group_id_list();
  EXPECT_DEATH(zox_group_unset_group_id_list(), "assertion failed: \\(groupIds\\)");
}

TEST_F(ZoxGroupIdsDeathTest, SetTwice) {
  set("1");
  EXPECT_DEATH(set("1"), "assertion failed: \\(groupIds == NULL\\)");
}

TEST_F(ZoxGroupIdsDeathTest, NeedsAListOfTexts) {
  EXPECT_DEATH(zox_group_set_group_id_list(nullptr), "assertion failed: \\(grouplist\\)");
  EXPECT_DEATH(zox_group_set_group_id_list(g_slist_prepend(nullptr, nullptr)),
               "assertion failed: \\(groupId\\)");
}

TEST_F(ZoxGroupIdsDeathTest, AskedWithoutASet) {
  EXPECT_DEATH(zox_group_id_is_in_list(1), "assertion failed: \\(groupIds\\)");
}

using ZoxGroupsDeathTest = ZoxGroups;

TEST_F(ZoxGroupsDeathTest, FreesNoNullAndNoNamelessGroup) {
  EXPECT_DEATH(zox_group_free(nullptr), "assertion failed: \\(group\\)");
  EXPECT_DEATH(zox_group_free(zox_group_new()), "assertion failed: \\(group->groupName\\)");
}

TEST(ZoxGroupsWithoutCoreDeathTest, NeedACore) {
  const char *message = "assertion failed: \\(core\\)";
  EXPECT_DEATH(zox_groups_get(), message);
  EXPECT_DEATH(zox_group_list_ready(), message);
  EXPECT_DEATH(zox_group_by_id(1), message);
  EXPECT_DEATH(zox_group_free_all(), message);
}

}  // namespace
}  // namespace velkor
