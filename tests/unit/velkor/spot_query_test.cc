/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/spot_query.h"

#include <cstdint>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/velkor/snapshots.h"

namespace velkor::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SpotQueryTest : public ::testing::Test {
protected:
  std::vector<std::int32_t> select(const SpotQuery &query) {
    return ids_of(*snapshot_, select_rows(*snapshot_, orders_, query));
  }

  SharedSnapshot snapshot_ = snapshot_of(
      {{.id = 1, .title = "De Haven", .poster = "anna", .stamp = 10},
       {.id = 2, .title = "Haven 2", .poster = "Hanna", .stamp = 30, .status = 1, .category = 1},
       {.id = 3, .title = "De Knoop", .stamp = 20, .marks = mark_new},
       {.id = 4, .title = "DE HAVEN 3", .stamp = 40, .marks = mark_hit}});
  Orders orders_{snapshot_};
};

TEST_F(SpotQueryTest, ByDefaultTheNewestComeFirst) {
  EXPECT_THAT(select({}), ElementsAre(4, 2, 3, 1));
}

TEST_F(SpotQueryTest, ByAnEntryOfTheTree) {
  EXPECT_THAT(select({.entry = 1}), ElementsAre(4, 3, 1));
  EXPECT_THAT(select({.entry = 2}), ElementsAre(3));
  EXPECT_THAT(select({.entry = 9}), IsEmpty());
}

TEST_F(SpotQueryTest, ByATextInTheTitleRegardlessOfCase) {
  EXPECT_THAT(select({.text = "haven"}), ElementsAre(4, 2, 1));
  EXPECT_THAT(select({.entry = 1, .text = "de h"}), ElementsAre(4, 1));
  EXPECT_THAT(select({.text = "zee"}), IsEmpty());
}

TEST_F(SpotQueryTest, ByMarks) {
  EXPECT_THAT(select({.marks = mark_new}), ElementsAre(3));
  EXPECT_THAT(select({.marks = mark_new | mark_hit}), ElementsAre(4, 3));
}

TEST_F(SpotQueryTest, ByWhatBelongsToThePosting) {
  EXPECT_THAT(select({.conditions = {.since = 20}}), ElementsAre(4, 2, 3));
  EXPECT_THAT(select({.conditions = {.status = 1}}), ElementsAre(2));
  EXPECT_THAT(select({.conditions = {.ids = {{1, 3, 99}}}}), ElementsAre(3, 1));
  EXPECT_THAT(select({.conditions = {.ids = std::set<std::int32_t>{}}}), IsEmpty());
  EXPECT_THAT(select({.conditions = {.poster = "ANN"}}), ElementsAre(2, 1));
  EXPECT_THAT(select({.text = "2", .conditions = {.poster = "ann"}}), ElementsAre(2));
}

TEST_F(SpotQueryTest, ByTheNamesOfTagsAndNewsgroups) {
  EXPECT_THAT(select({.conditions = {.tag = "dram"}}), ElementsAre(4, 1));
  EXPECT_THAT(select({.conditions = {.newsgroup = "binaries.b"}}), ElementsAre(2));
  EXPECT_THAT(select({.conditions = {.tag = "western"}}), IsEmpty());
}

TEST_F(SpotQueryTest, TellsWhichConditionKeepsAPostingOut) {
  const auto unmet = [this](std::int32_t id, const SpotQuery &query) {
    return unmet_condition(*snapshot_, query, *snapshot_->table.find(id));
  };
  EXPECT_EQ(unmet(1, {}), Condition::none);
  EXPECT_EQ(unmet(2, {.entry = 1}), Condition::entry);
  EXPECT_EQ(unmet(2, {.entry = 9}), Condition::entry);
  EXPECT_EQ(unmet(1, {.text = "zee"}), Condition::search);
  EXPECT_EQ(unmet(1, {.marks = mark_new}), Condition::marks);
  EXPECT_EQ(unmet(1, {.conditions = {.since = 11}}), Condition::period);
  EXPECT_EQ(unmet(1, {.conditions = {.status = 1}}), Condition::status);
  EXPECT_EQ(unmet(1, {.conditions = {.ids = {{2}}}}), Condition::ids);
  EXPECT_EQ(unmet(3, {.conditions = {.poster = "anna"}}), Condition::poster);
  EXPECT_EQ(unmet(2, {.conditions = {.tag = "drama"}}), Condition::tag);
  EXPECT_EQ(unmet(1, {.conditions = {.newsgroup = "binaries"}}), Condition::newsgroup);
}

TEST_F(SpotQueryTest, InEitherDirection) {
  EXPECT_THAT(select({.sorting = {Column::title, false}}), ElementsAre(1, 4, 3, 2));
  EXPECT_THAT(select({.sorting = {Column::title, true}}), ElementsAre(2, 3, 4, 1));
}

TEST_F(SpotQueryTest, TellsWhereAPostingStands) {
  const std::vector<Row> rows = select_rows(*snapshot_, orders_, {.text = "haven"});
  EXPECT_EQ(place_of(*snapshot_, rows, 2), 1U);
  EXPECT_EQ(place_of(*snapshot_, rows, 3), std::nullopt);
  EXPECT_EQ(place_of(*snapshot_, rows, 99), std::nullopt);
}

TEST_F(SpotQueryTest, TheSameEntryIsFoundInAnotherTree) {
  std::vector<TreeEntry> tree = snapshot_->tree;
  const TreeEntry filter = tree[2];
  tree.insert(tree.begin() + 1,
              {.kind = TreeEntry::Kind::category, .name = "Geluid", .category = 1});
  EXPECT_EQ(matching_entry(tree, filter), 3U);
  tree.pop_back();
  EXPECT_EQ(matching_entry(tree, filter), 0U);
}

TEST(Snapshot, CountsEntries) {
  const SharedSnapshot snapshot =
      snapshot_of({{.id = 1}, {.id = 2, .marks = mark_new}, {.id = 3, .category = 1}});
  EXPECT_EQ(snapshot->tree[0].count, 3U);
  EXPECT_EQ(snapshot->tree[0].new_count, 1U);
  EXPECT_EQ(snapshot->tree[1].count, 2U);
  EXPECT_EQ(snapshot->tree[2].count, 1U);
}

TEST(Snapshot, HasWordsForWhatItKnows) {
  const SharedSnapshot snapshot = snapshot_of({{.id = 1}, {.id = 2, .status = 77, .category = 3}});
  EXPECT_EQ(snapshot->category_name(0), "Beeld/DivX");
  EXPECT_EQ(snapshot->status_name(0), "Ready");
  EXPECT_EQ(snapshot->category_name(1), "");
  EXPECT_EQ(snapshot->status_name(1), "");
}

}  // namespace
}  // namespace velkor::app
