/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/posting_table.h"

#include <gtest/gtest.h>

namespace velkor::app {
namespace {

TEST(PostingTable, KeepsTheFields) {
  PostingTable table;
  table.add({.id = 5,
             .title = "Een",
             .poster = "anna",
             .stamp = 7'000'000'000,
             .rating = 70,
             .status = -3,
             .category = 3,
             .sub_category = 9,
             .marks = mark_new});
  table.add({.id = 3, .title = "", .poster = "bert"});
  table.add({.id = 4, .title = "Drie", .poster = "anna", .marks = mark_hit});
  table.complete();
  ASSERT_EQ(table.size(), 3U);
  EXPECT_EQ(table.title(0), "Een");
  EXPECT_EQ(table.title(1), "");
  EXPECT_EQ(table.title(2), "Drie");
  EXPECT_EQ(table.poster(0), "anna");
  EXPECT_EQ(table.poster(1), "bert");
  EXPECT_EQ(table.poster_number(0), table.poster_number(2));
  EXPECT_EQ(table.stamp(0), 7'000'000'000);
  EXPECT_EQ(table.rating(0), 70);
  EXPECT_EQ(table.status(0), -3);
  EXPECT_EQ(table.category(0), 3);
  EXPECT_EQ(table.sub_category(0), 9);
  EXPECT_TRUE(table.has(0, mark_new));
  EXPECT_FALSE(table.has(0, mark_hit));
  EXPECT_TRUE(table.has(2, mark_hit));
}

TEST(PostingTable, FindsRowsById) {
  PostingTable table;
  for (const std::int32_t id : {30, 10, 20})
    table.add({.id = id});
  table.complete();
  EXPECT_EQ(table.find(30), 0U);
  EXPECT_EQ(table.find(10), 1U);
  EXPECT_EQ(table.find(20), 2U);
  EXPECT_EQ(table.find(15), std::nullopt);
  EXPECT_EQ(table.find(31), std::nullopt);
}

TEST(PostingTable, AnEmptyOneHasNoRows) {
  PostingTable table;
  table.complete();
  EXPECT_EQ(table.size(), 0U);
  EXPECT_EQ(table.find(1), std::nullopt);
}

TEST(PostingTable, NumbersThatMeanNothingStayWithoutMeaning) {
  PostingTable table;
  table.add({.id = 1, .status = 100'000, .category = -100'000});
  EXPECT_EQ(table.status(0), 127);
  EXPECT_EQ(table.category(0), -128);
}

}  // namespace
}  // namespace velkor::app
