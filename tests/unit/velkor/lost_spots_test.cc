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

}  // namespace
}  // namespace velkor::app
