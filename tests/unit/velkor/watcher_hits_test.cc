/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/watcher_hits.h"

#include <gtest/gtest.h>

#include "snapshots.h"

namespace velkor::app {
namespace {

TEST(WatcherHits, AreGroupedByWatcherTheNewestFirst) {
  const SharedSnapshot snapshot = snapshot_of({{.id = 1, .title = "De haven", .stamp = 10},
                                               {.id = 2, .title = "Een schip", .stamp = 20},
                                               {.id = 3, .title = "Oude haven", .stamp = 20},
                                               {.id = 4, .title = "Haven", .stamp = 20}});
  const std::vector<WatcherHit> hits{{1, "haven"}, {2, "boot"}, {3, "haven"}, {4, "haven"}};
  EXPECT_EQ(group_by_watcher(*snapshot, hits),
            (std::vector<WatcherGroup>{
                {"boot", 1, {{2, "Een schip"}}},
                {"haven", 3, {{4, "Haven"}, {3, "Oude haven"}, {1, "De haven"}}}}));
}

TEST(WatcherHits, AreToldByTheNewestAndCounted) {
  std::vector<PostingFields> postings;
  std::vector<WatcherHit> hits;
  for (std::int32_t id = 1; id <= 9; ++id) {
    postings.push_back({.id = id, .title = "haven", .stamp = id});
    hits.push_back({id, "haven"});
  }
  const std::vector<WatcherGroup> groups = group_by_watcher(*snapshot_of(postings), hits);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].count, 9U);
  EXPECT_EQ(groups[0].spots, (std::vector<HitSpot>{{9, "haven"}, {8, "haven"}, {7, "haven"}}));
}

TEST(WatcherHits, ThatAreNotListedAreLeftOut) {
  const SharedSnapshot snapshot = snapshot_of({{.id = 1, .title = "De haven"}});
  const std::vector<WatcherHit> hits{{1, "haven"}, {2, "haven"}, {3, "zee"}};
  EXPECT_EQ(group_by_watcher(*snapshot, hits),
            (std::vector<WatcherGroup>{{"haven", 1, {{1, "De haven"}}}}));
  EXPECT_EQ(group_by_watcher(*snapshot, {}), std::vector<WatcherGroup>{});
}

}  // namespace
}  // namespace velkor::app
