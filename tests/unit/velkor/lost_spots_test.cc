/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/lost_spots.h"

#include <gtest/gtest.h>

namespace velkor::app {
namespace {

constexpr std::int64_t day = 86400;
constexpr std::int64_t now = 100 * day;

Snapshot snapshot_of(const std::vector<PostingFields> &postings) {
  Snapshot snapshot;
  for (const PostingFields &posting : postings)
    snapshot.table.add(posting);
  snapshot.table.complete();
  return snapshot;
}

TEST(LostSpots, HoldOneOfTheWordsInAnyCase) {
  const Snapshot snapshot = snapshot_of(
      {{.id = 1, .title = "De HAVEN"}, {.id = 2, .title = "Een schip"}, {.id = 3, .title = "Zee"}});
  EXPECT_EQ(spots_with_words(snapshot, {"haven", "Schip"}),
            (LostSpots{2, {"De HAVEN", "Een schip"}}));
  EXPECT_EQ(spots_with_words(snapshot, {}), LostSpots{});
  EXPECT_EQ(spots_with_words(snapshot, {"berg"}), LostSpots{});
}

TEST(LostSpots, AreNoDeletedOnes) {
  const Snapshot snapshot = snapshot_of({{.id = 1, .title = "haven", .status = -2},
                                         {.id = 2, .title = "haven", .status = -3},
                                         {.id = 3, .title = "haven", .status = -1}});
  EXPECT_EQ(spots_with_words(snapshot, {"haven"}).count, 1U);
}

TEST(LostSpots, AreToldByTheFirstTitles) {
  std::vector<PostingFields> postings;
  for (std::int32_t id = 1; id <= 9; ++id)
    postings.push_back({.id = id, .title = "haven"});
  const LostSpots lost = spots_with_words(snapshot_of(postings), {"haven"});
  EXPECT_EQ(lost.count, 9U);
  EXPECT_EQ(lost.titles.size(), 5U);
}

TEST(LostSpots, AreOlderThanTheLimitAndNotWatched) {
  Snapshot snapshot = snapshot_of({{.id = 1, .stamp = now - 7 * day},
                                   {.id = 2, .stamp = now - 7 * day - 1},
                                   {.id = 3, .stamp = now - 20 * day}});
  EXPECT_EQ(spots_older_than(snapshot, 7, now), 2U);
  snapshot.watched = {3};
  EXPECT_EQ(spots_older_than(snapshot, 7, now), 1U);
  EXPECT_EQ(spots_older_than(snapshot, 21, now), 0U);
}

Snapshot snapshot_of_old_spots(std::int32_t count) {
  std::vector<PostingFields> postings;
  for (std::int32_t id = 1; id <= count; ++id)
    postings.push_back({.id = id, .stamp = now - 7 * day - id});
  return snapshot_of(postings);
}

TEST(LostSpots, AreAllWhenNoneIsYoungEnough) {
  const Snapshot snapshot = snapshot_of_old_spots(20);
  EXPECT_EQ(spots_of_an_emptied_list(snapshot, {}, 7, now), 20U);
  EXPECT_EQ(spots_of_an_emptied_list(snapshot, {}, 7, now - 1), 0U);  // the youngest is kept
  EXPECT_EQ(spots_of_an_emptied_list(snapshot, {}, 14, now), 0U);
}

TEST(LostSpots, AreAllWhenOnlyTheWatchlistRemains) {
  const Snapshot snapshot = snapshot_of_old_spots(20);
  EXPECT_EQ(spots_of_an_emptied_list(snapshot, {1, 20}, 7, now), 18U);
  EXPECT_EQ(spots_of_an_emptied_list(snapshot, {1}, 7, now - 1), 19U);  // it is the youngest
}

TEST(LostSpots, OfAListOfAFewAreNotAskedAbout) {
  EXPECT_EQ(spots_of_an_emptied_list(snapshot_of_old_spots(10), {}, 7, now), 0U);
  EXPECT_EQ(spots_of_an_emptied_list(snapshot_of_old_spots(11), {}, 7, now), 11U);
}

}  // namespace
}  // namespace velkor::app
